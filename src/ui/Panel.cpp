// SPDX-License-Identifier: MIT
#include "ui/Panel.h"

#include "log/Fatal.h"
#include "ui/PanelPlacement.h"
#include "ui/QmlModules.h"
#include "ui/RoundedRegion.h"

#include <QGuiApplication>
#include <QQmlComponent>
#include <QQmlEngine>
#include <QQuickItem>
#include <QQuickWindow>
#include <QScreen>

#include <utility>

namespace clavo
{
namespace
{

constexpr auto panelWindow = "qrc:/qt-project.org/imports/Clavo/PanelWindow.qml";

/// Whether a window of ours appears where we want it to.
bool canPlaceWindows()
{
    return !QGuiApplication::platformName().startsWith("wayland");
}

/// Gives every item its place now. The scene does so with its first frame, too late for the window
/// to appear with the height that wrapped texts need.
void layOut(QQuickItem& item)
{
    for (auto* const child : item.childItems())
        layOut(*child);
    item.ensurePolished();
}

ScreenArea screenAt(const QPoint& point)
{
    const auto* screen = QGuiApplication::screenAt(point);
    if (!screen)
        screen = QGuiApplication::primaryScreen();
    return {.whole = screen->geometry(), .work = screen->availableGeometry()};
}

} // namespace

/// What exists while the panel is open. The window goes before the engine.
struct Panel::Interface {
    QQmlEngine engine;
    std::unique_ptr<QQuickWindow> window;
};

Panel::Panel(AppState& state, Clock clock) : m_state(state), m_clock(std::move(clock)) {}

Panel::~Panel()
{
    if (isOpen())
        m_interface->window->disconnect(this);
}

void Panel::open(std::optional<QRect> place)
{
    if (isOpen()) {
        m_interface->window->raise();
        m_interface->window->requestActivate();
        return;
    }
    registerQmlModules();
    m_place = canPlaceWindows() ? place : std::nullopt;
    m_hadFocus = false;
    m_interface = std::make_unique<Interface>();
    QQmlComponent component(&m_interface->engine, QUrl(panelWindow));
    auto* const window = qobject_cast<QQuickWindow*>(component.createWithInitialProperties({
        {"appState", QVariant::fromValue(&m_state)},
        {"stats", QVariant::fromValue(m_state.stats())},
        {"placed", m_place.has_value()},
    }));
    if (!window)
        fatal(component.errorString().toStdString());
    m_interface->window.reset(window);
    if (m_place)
        window->setProperty("largestHeight", largestPanelHeight(screenAt(m_place->topLeft())));

    // By name, as the window's type is QML's.
    connect(window, SIGNAL(settingsRequested()), this, SIGNAL(settingsRequested()));
    connect(window, SIGNAL(settingsRequested()), this, SLOT(close()));
    connect(window, SIGNAL(quitRequested()), this, SIGNAL(quitRequested()));
    connect(window, &QWindow::heightChanged, this, &Panel::moveToPlace);
    connect(window, &QWindow::activeChanged, this, [=, this] { follow(window->isActive()); });
    connect(window, &QWindow::visibleChanged, this, [this](bool isVisible) {
        if (!isVisible)
            close();
    });
    layOut(*window->contentItem());
    moveToPlace();
    window->show();
    window->requestActivate();
}

void Panel::close()
{
    if (!isOpen())
        return;
    // Whoever closes it may be one of its own handlers.
    std::shared_ptr<Interface> closed = std::move(m_interface);
    closed->window->disconnect(this);
    closed->window->hide();
    QMetaObject::invokeMethod(
        this,
        [this, closed = std::move(closed)]() mutable {
            closed.reset();
            emit freed();
        },
        Qt::QueuedConnection);
}

void Panel::toggle(std::optional<QRect> place)
{
    const auto lostFocus = std::exchange(m_lostFocus, std::nullopt);
    if (isOpen())
        close();
    else if (!lostFocus || m_clock() - *lostFocus > clickTime)
        open(place);
}

void Panel::moveToPlace()
{
    if (!m_place)
        return;
    auto* const window = m_interface->window.get();
    const auto screen = screenAt(m_place->topLeft());
    window->setPosition(panelPosition(window->size(), *m_place, screen));
    window->setMask(roundedRegion(window->size(), window->property("radius").toInt()));
}

void Panel::follow(bool isActive)
{
    if (isActive) {
        m_hadFocus = true;
    } else if (m_hadFocus) {
        m_lostFocus = m_clock();
        close();
    }
}

} // namespace clavo
