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

/// The application as the user meets it: the menu-bar item and what it opens, all over the one
/// state.
class ClavoApp : public QObject
{
    Q_OBJECT

public:
    /// From the start until the desktop's tray must have answered.
    static constexpr std::chrono::milliseconds trayPatience{2000};

    /// Shows the menu-bar item and answers other processes' requests from now on. The state and the
    /// platform, whose instance this process is, outlive it.
    ClavoApp(AppState& state, Platform& platform, std::unique_ptr<Timer> timer);

    /// Shows a user who has started the program by hand that it runs, by opening the panel: at once
    /// when it may not listen, and when no tray has answered in time. Later, from the main loop.
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
