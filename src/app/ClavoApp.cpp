// SPDX-License-Identifier: MIT
#include "app/ClavoApp.h"

#include "platform/Platform.h"
#include "ui/controls/Appearance.h"

#include <QCoreApplication>
#include <QQuickWindow>

#include <optional>

namespace clavo
{

ClavoApp::ClavoApp(AppState& state, Instance& instance)
    : m_state(state), m_trayHosts(makeTrayHosts()), m_menuBarItem(*m_trayHosts), m_panel(state),
      m_language(state.defaults()), m_fileManager(makeFileManager()),
      m_settingsWindow(state, m_language, *m_fileManager)
{
    // A graphics driver would stay in memory after the windows that needed it.
    QQuickWindow::setGraphicsApi(QSGRendererInterface::Software);
    Appearance::shared().follow(makeAppearanceSettings());

    const auto showEnabled = [this] { m_menuBarItem.setEnabled(m_state.enabled()); };
    connect(&m_state, &AppState::enabledChanged, this, showEnabled);
    showEnabled();
    connect(&m_menuBarItem, &MenuBarItem::enabledRequested, &m_state, &AppState::setEnabled);
    connect(&m_menuBarItem, &MenuBarItem::openRequested, &m_panel, &Panel::toggle);
    connect(&m_menuBarItem, &MenuBarItem::quitRequested, qApp, &QCoreApplication::quit);
    connect(&m_panel, &Panel::quitRequested, qApp, &QCoreApplication::quit);
    connect(&m_panel, &Panel::freed, this, returnFreedMemory);
    const auto openSettings = [this] { m_settingsWindow.open(); };
    connect(&m_menuBarItem, &MenuBarItem::settingsRequested, this, openSettings);
    connect(&m_panel, &Panel::settingsRequested, this, openSettings);
    connect(&m_settingsWindow, &SettingsWindow::quitRequested, qApp, &QCoreApplication::quit);
    connect(&m_settingsWindow, &SettingsWindow::freed, this, returnFreedMemory);
    instance.receive([this](Instance::Request request) { answer(request); },
                     [this] { return jsonOf(m_state.status()); });
}

void ClavoApp::answer(Instance::Request request)
{
    switch (request) {
    case Instance::Request::openPanel:
        // The process that asks does not wait for a window to be made.
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
