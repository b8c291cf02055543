// SPDX-License-Identifier: MIT
#pragma once

#include "app/AppState.h"
#include "app/FileManager.h"
#include "app/LanguageSetting.h"
#include "ui/QmlWindow.h"
#include "ui/StatsExport.h"

#include <optional>

namespace clavo
{

/// The window with the tabs General, Statistics and About.
class SettingsWindow : public QmlWindow
{
    Q_OBJECT

public:
    enum class Tab { general, stats, about };

    /// All outlive the window.
    SettingsWindow(AppState& state, LanguageSetting& language, FileManager& fileManager);

    /// Shows the window in front of all others, with the focus, and selects the tab. Without a tab
    /// an open window keeps its own, and a new one shows the first.
    void open(std::optional<Tab> tab = {});
    void close() override;

private slots:
    void showPacksFolder();
    void askForExport();

private:
    AppState& m_state;
    LanguageSetting& m_language;
    FileManager& m_fileManager;
    StatsExport m_export;
};

} // namespace clavo
