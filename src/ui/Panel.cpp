// SPDX-License-Identifier: MIT
#include "ui/Panel.h"

#include "ui/PanelPlacement.h"
#include "ui/QmlWindow.h"

#include <QGuiApplication>
#include <QQmlEngine>
#include <QScreen>

#include <utility>

namespace clavo
{
namespace
{

/// Whether a window of ours appears where we want it to.
bool canPlaceWindows()
{
    return !QGuiApplication::platformName().startsWith("wayland");
}

ScreenArea screenAt(const QPoint& point)
{
    const auto* const screen = QGuiApplication::screenAt(point);
    return areaOf(screen ? *screen : *QGuiApplication::primaryScreen());
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
    m_place = canPlaceWindows() ? place : std::nullopt;
    m_hadFocus = false;
    m_interface = std::make_unique<Interface>();
    m_interface->window = makeWindow(m_interface->engine, "PanelWindow.qml",
                                     {
                                         {"appState", QVariant::fromValue(&m_state)},
                                         {"stats", QVariant::fromValue(m_state.stats())},
                                         {"placed", m_place.has_value()},
                                     });
    auto* const window = m_interface->window.get();
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
    layOut(*window);
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
    if (m_place)
        placePanel(*m_interface->window, *m_place, screenAt(m_place->topLeft()));
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
