// SPDX-License-Identifier: MIT
#include "ui/SettingsWindow.h"

#include <QVariant>

namespace clavo
{

SettingsWindow::SettingsWindow(AppState& state, LanguageSetting& language, FileManager& fileManager)
    : m_state(state), m_language(language), m_fileManager(fileManager), m_export(*state.stats())
{
}

void SettingsWindow::open(std::optional<Tab> tab)
{
    if (!isOpen()) {
        const auto& made =
            make("SettingsWindow.qml", {{"appState", QVariant::fromValue(&m_state)},
                                        {"language", QVariant::fromValue(&m_language)}});
        connect(&made, SIGNAL(packsFolderRequested()), this, SLOT(showPacksFolder()));
        connect(&made, SIGNAL(exportRequested()), this, SLOT(askForExport()));
    }
    if (tab)
        window().setProperty("tab", static_cast<int>(*tab));
    window().setWindowStates(window().windowStates() & ~Qt::WindowMinimized);
    window().show();
    window().raise();
    window().requestActivate();
}

void SettingsWindow::close()
{
    m_export.cancel();
    QmlWindow::close();
}

void SettingsWindow::showPacksFolder()
{
    m_fileManager.show(m_state.packsFolder());
}

void SettingsWindow::askForExport()
{
    m_export.ask(&window());
}

} // namespace clavo
