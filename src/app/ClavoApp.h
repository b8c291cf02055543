// SPDX-License-Identifier: MIT
#pragma once

#include "app/AppState.h"
#include "app/FileManager.h"
#include "app/Instance.h"
#include "app/LanguageSetting.h"
#include "tray/TrayHosts.h"
#include "ui/Panel.h"
#include "ui/SettingsWindow.h"
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
    LanguageSetting m_language;
    std::unique_ptr<FileManager> m_fileManager;
    SettingsWindow m_settingsWindow;
};

} // namespace clavo
