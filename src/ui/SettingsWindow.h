// SPDX-License-Identifier: MIT
#pragma once

#include "app/AppState.h"
#include "app/FileManager.h"
#include "app/LanguageSetting.h"
#include "ui/StatsExport.h"

#include <QObject>

#include <memory>
#include <optional>

namespace clavo
{

/// The settings window. All of it, its QML engine included, is made when it opens and gone when it
/// is closed, so that a program nobody looks at stays small. Thread: main.
class SettingsWindow : public QObject
{
    Q_OBJECT

public:
    enum class Tab { general, stats, about };

    /// All outlive the window.
    SettingsWindow(AppState& state, LanguageSetting& language, FileManager& fileManager);
    ~SettingsWindow() override;

    /// Brings the window to the front of the desktop, whoever has the focus, and turns to the tab:
    /// without one, to the first where the window has to be made.
    void open(std::optional<Tab> tab = {});
    /// Hides the window at once and frees it from the main loop.
    void close();

    [[nodiscard]] bool isOpen() const { return m_interface != nullptr; }

signals:
    void quitRequested();
    /// Everything that the window took has been freed.
    void freed();

private slots:
    void showPacksFolder();
    void askForExport();

private:
    struct Interface;

    void make();

    AppState& m_state;
    LanguageSetting& m_language;
    FileManager& m_fileManager;
    StatsExport m_export;
    std::unique_ptr<Interface> m_interface; // Null while closed.
};

} // namespace clavo
