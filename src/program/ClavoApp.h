// SPDX-License-Identifier: MIT
#pragma once

#include "app/AppState.h"
#include "app/Instance.h"
#include "app/LanguageSetting.h"
#include "app/Platform.h"
#include "time/Timer.h"
#include "ui/Panel.h"
#include "ui/SettingsWindow.h"
#include "ui/menubar/MenuBarItem.h"

#include <QObject>

#include <chrono>
#include <memory>

namespace clavo
{

/// The user interface of the application: the menu-bar item and the windows that it opens.
class ClavoApp : public QObject
{
    Q_OBJECT

public:
    /// The time that the desktop's tray has to answer.
    static constexpr std::chrono::milliseconds trayPatience{2000};

    /// Shows the menu-bar item and answers other processes' requests from now on. The state and the
    /// platform, whose instance this process is, outlive it.
    ClavoApp(AppState& state, Platform& platform, std::unique_ptr<Timer> timer);

    /// Opens the panel for a user who has started the program by hand, so that they see it run: at
    /// once if it may not listen, else if no tray has answered in time. Called back from the main
    /// loop.
    void greet();

private:
    void answer(Instance::Request request);

    AppState& m_state;
    std::unique_ptr<Timer> m_timer; // Runs until the greeting.
    MenuBarItem m_menuBarItem;
    Panel m_panel;
    LanguageSetting m_language;
    SettingsWindow m_settingsWindow;
};

} // namespace clavo
