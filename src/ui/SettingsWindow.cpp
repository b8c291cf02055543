// SPDX-License-Identifier: MIT
#include "ui/SettingsWindow.h"

#include "ui/QmlWindow.h"

#include <QQmlEngine>

#include <utility>

namespace clavo
{

/// What exists while the window is open. The window goes before the engine.
struct SettingsWindow::Interface {
    QQmlEngine engine;
    std::unique_ptr<QQuickWindow> window;
};

SettingsWindow::SettingsWindow(AppState& state, LanguageSetting& language, FileManager& fileManager)
    : m_state(state), m_language(language), m_fileManager(fileManager), m_export(*state.stats())
{
}

SettingsWindow::~SettingsWindow()
{
    if (m_interface)
        m_interface->window->disconnect(this); // Its end is not the user's closing it.
}

void SettingsWindow::open(std::optional<Tab> tab)
{
    if (!isOpen())
        make();
    auto* const window = m_interface->window.get();
    if (tab)
        window->setProperty("tab", static_cast<int>(*tab));
    window->setWindowStates(window->windowStates() & ~Qt::WindowMinimized);
    window->show();
    window->raise();
    window->requestActivate();
}

void SettingsWindow::close()
{
    if (!isOpen())
        return;
    m_export.cancel();
    // Whoever closes it may be one of its own handlers.
    std::shared_ptr<Interface> closed = std::move(m_interface);
    closed->window->disconnect(this);
    closed->window->hide();
    QMetaObject::invokeMethod(
        this,
        [this, closed]() mutable {
            closed.reset();
            emit freed();
        },
        Qt::QueuedConnection);
}

void SettingsWindow::make()
{
    m_interface = std::make_unique<Interface>();
    m_interface->window = makeWindow(m_interface->engine, "SettingsWindow.qml",
                                     {
                                         {"appState", QVariant::fromValue(&m_state)},
                                         {"stats", QVariant::fromValue(m_state.stats())},
                                         {"language", QVariant::fromValue(&m_language)},
                                     });
    auto* const window = m_interface->window.get();

    // By name: QML has no type for the window here.
    connect(window, SIGNAL(packsFolderRequested()), this, SLOT(showPacksFolder()));
    connect(window, SIGNAL(exportRequested()), this, SLOT(askForExport()));
    connect(window, SIGNAL(quitRequested()), this, SIGNAL(quitRequested()));
    connect(window, &QWindow::visibleChanged, this, [this](bool isVisible) {
        if (!isVisible)
            close();
    });
}

void SettingsWindow::showPacksFolder()
{
    m_fileManager.show(m_state.packsFolder());
}

void SettingsWindow::askForExport()
{
    m_export.ask(m_interface->window.get());
}

} // namespace clavo
