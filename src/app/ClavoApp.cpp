// SPDX-License-Identifier: MIT
#include "app/ClavoApp.h"

#include "platform/Platform.h"

#include <QCoreApplication>

namespace clavo
{

ClavoApp::ClavoApp(AppState& state, Instance& instance)
    : m_state(state), m_trayHosts(makeTrayHosts()), m_menuBarItem(*m_trayHosts)
{
    const auto showEnabled = [this] { m_menuBarItem.setEnabled(m_state.enabled()); };
    connect(&m_state, &AppState::enabledChanged, this, showEnabled);
    showEnabled();
    connect(&m_menuBarItem, &MenuBarItem::enabledRequested, &m_state, &AppState::setEnabled);
    connect(&m_menuBarItem, &MenuBarItem::quitRequested, qApp, &QCoreApplication::quit);
    instance.receive([this](Instance::Request request) { answer(request); });
}

void ClavoApp::answer(Instance::Request request)
{
    switch (request) {
    case Instance::Request::openPanel:
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
