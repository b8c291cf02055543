// SPDX-License-Identifier: MIT
#include "ui/Panel.h"

#include "ui/PanelPlacement.h"

#include <QGuiApplication>
#include <QScreen>
#include <QVariant>

#include <utility>

namespace clavo
{
namespace
{

ScreenArea screenAt(const QPoint& point)
{
    const auto* const screen = QGuiApplication::screenAt(point);
    return areaOf(screen ? *screen : *QGuiApplication::primaryScreen());
}

} // namespace

Panel::Panel(AppState& state, Clock clock) : m_state(state), m_clock(std::move(clock)) {}

void Panel::open(std::optional<QRect> place)
{
    if (isOpen()) {
        window().raise();
        window().requestActivate();
        return;
    }
    m_place = place;
    m_hadFocus = false;
    auto& panel = make("PanelWindow.qml", {{"appState", QVariant::fromValue(&m_state)},
                                           {"placed", m_place.has_value()}});
    if (m_place)
        panel.setProperty("largestHeight", largestPanelHeight(screenAt(m_place->topLeft())));

    connect(&panel, SIGNAL(settingsRequested()), this, SIGNAL(settingsRequested()));
    connect(&panel, SIGNAL(settingsRequested()), this, SLOT(close()));
    connect(&panel, &QWindow::heightChanged, this, &Panel::moveToPlace);
    connect(&panel, &QWindow::activeChanged, this,
            [this, &panel] { closeOnLostFocus(panel.isActive()); });
    layOut(panel);
    moveToPlace();
    panel.show();
    panel.requestActivate();
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
        placePanel(window(), *m_place, screenAt(m_place->topLeft()));
}

void Panel::closeOnLostFocus(bool isActive)
{
    if (isActive) {
        m_hadFocus = true;
    } else if (m_hadFocus) {
        m_lostFocus = m_clock();
        close();
    }
}

} // namespace clavo
