// SPDX-License-Identifier: MIT
#include "program/ClavoApp.h"

#include "platform/Platform.h"
#include "ui/controls/Appearance.h"

#include <QGuiApplication>

#include <optional>
#include <utility>

namespace clavo
{

ClavoApp::ClavoApp(AppState& state, Platform& platform, std::unique_ptr<Timer> timer)
    : m_state(state), m_timer(std::move(timer)), m_menuBarItem(*platform.trayHosts), m_panel(state),
      m_language(*platform.defaults), m_settingsWindow(state, m_language, *platform.fileManager)
{
    Appearance::shared().follow(*platform.appearance);

    const auto showEnabled = [this] { m_menuBarItem.setEnabled(m_state.enabled()); };
    connect(&m_state, &AppState::enabledChanged, this, showEnabled);
    showEnabled();
    connect(&m_menuBarItem, &MenuBarItem::enabledRequested, &m_state, &AppState::setEnabled);
    connect(&m_menuBarItem, &MenuBarItem::openRequested, this,
            [this, canPlace = platform.canPlaceWindows](const QRect& icon) {
                m_panel.toggle(canPlace ? std::optional(icon) : std::nullopt);
            });
    connect(&m_menuBarItem, &MenuBarItem::quitRequested, qApp, &QCoreApplication::quit);
    connect(&m_panel, &Panel::quitRequested, qApp, &QCoreApplication::quit);
    connect(&m_panel, &Panel::freed, this, returnFreedMemory);
    const auto openSettings = [this] { m_settingsWindow.open(); };
    connect(&m_menuBarItem, &MenuBarItem::settingsRequested, this, openSettings);
    connect(&m_panel, &Panel::settingsRequested, this, openSettings);
    connect(&m_settingsWindow, &SettingsWindow::quitRequested, qApp, &QCoreApplication::quit);
    connect(&m_settingsWindow, &SettingsWindow::freed, this, returnFreedMemory);
    platform.instance->receive([this](Instance::Request request) { answer(request); },
                               [this] { return jsonOf(m_state.status()); });
}

void ClavoApp::greet()
{
    const auto patience = m_state.hasPermission() ? trayPatience : std::chrono::milliseconds(0);
    m_timer->start(patience, [this] {
        if (!m_state.hasPermission() || !m_menuBarItem.isShown())
            m_panel.open(std::nullopt);
    });
}

void ClavoApp::answer(Instance::Request request)
{
    switch (request) {
    case Instance::Request::openPanel:
        // Queued: the process that asks does not wait until a window is created.
        QMetaObject::invokeMethod(
            &m_panel, [this] { m_panel.open(std::nullopt); }, Qt::QueuedConnection);
        break;
    case Instance::Request::toggle:
        m_state.toggle();
        break;
    case Instance::Request::quit:
        QCoreApplication::exit();
        break;
    }
}

} // namespace clavo
