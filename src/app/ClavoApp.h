// SPDX-License-Identifier: MIT
#pragma once

#include "app/AppState.h"
#include "app/Instance.h"
#include "tray/TrayHosts.h"
#include "ui/Panel.h"
#include "ui/menubar/MenuBarItem.h"

#include <QObject>

#include <memory>

namespace clavo
{

/// The application as the user meets it: the menu-bar item and what it opens, all over the one
/// state.
class ClavoApp : public QObject
{
    Q_OBJECT

public:
    /// Shows the menu-bar item and answers other processes' requests from now on. The state and the
    /// instance outlive it.
    ClavoApp(AppState& state, Instance& instance);

private:
    void answer(Instance::Request request);

    AppState& m_state;
    std::unique_ptr<TrayHosts> m_trayHosts;
    MenuBarItem m_menuBarItem;
    Panel m_panel;
};

} // namespace clavo
