// SPDX-License-Identifier: MIT
#include "presentation/LiveScene.h"

#include "ui/PanelPlacement.h"
#include "ui/QmlWindow.h"
#include "ui/SettingsWindow.h"

#include <QGuiApplication>
#include <QScreen>

#include <ostream>
#include <utility>

namespace clavo
{

QRect iconPlace(const ScreenArea& screen)
{
    constexpr QSize icon(24, 24);
    constexpr int fromCorner = 80; // Leaves room for the clock and other icons.
    QRect place({}, icon);
    place.moveRight(screen.work.right() - fromCorner);
    const auto above = screen.work.top() - screen.whole.top();
    const auto below = screen.whole.bottom() - screen.work.bottom();
    if (below > above)
        place.moveBottom(screen.whole.bottom());
    else
        place.moveTop(screen.whole.top());
    return place;
}

std::optional<LiveScene::Scene> LiveScene::named(std::string_view name)
{
    if (name == "menu")
        return Scene::menu;
    if (name == "stats")
        return Scene::stats;
    if (name == "general")
        return Scene::general;
    return std::nullopt;
}

LiveScene::LiveScene(AppState& state, LanguageSetting& language, std::ostream& output)
    : m_state(state), m_language(language), m_output(output)
{
}

void LiveScene::show(Scene scene)
{
    const auto& screen = *QGuiApplication::primaryScreen();
    auto& window = scene == Scene::menu ? menuPanel(screen) : settingsWindow(scene, screen);
    connect(&window, &QQuickWindow::frameSwapped, this, &LiveScene::printReady,
            static_cast<Qt::ConnectionType>(Qt::QueuedConnection | Qt::SingleShotConnection));
    window.show();
    window.raise();
    window.requestActivate();
}

QQuickWindow& LiveScene::menuPanel(const QScreen& screen)
{
    auto& window = addWindow("PanelWindow.qml", {{"placed", true}});
    window.setProperty("largestHeight", largestPanelHeight(areaOf(screen)));
    layOut(window);
    placePanel(window, iconPlace(areaOf(screen)), areaOf(screen));
    return window;
}

QQuickWindow& LiveScene::settingsWindow(Scene tab, const QScreen& screen)
{
    const auto shown =
        tab == Scene::stats ? SettingsWindow::Tab::stats : SettingsWindow::Tab::general;
    auto& window = addWindow("SettingsWindow.qml", {{"language", QVariant::fromValue(&m_language)},
                                                    {"tab", static_cast<int>(shown)}});
    QRect place({}, window.size());
    place.moveCenter(screen.availableGeometry().center());
    window.setPosition(place.topLeft());
    return window;
}

QQuickWindow& LiveScene::addWindow(const char* file, QVariantMap properties)
{
    properties.insert("appState", QVariant::fromValue(&m_state));
    auto& window = *m_windows.emplace_back(makeWindow(m_engine, file, properties));
    // By name, since the window's type is defined in QML.
    connect(&window, SIGNAL(quitRequested()), QCoreApplication::instance(), SLOT(quit()));
    return window;
}

void LiveScene::printReady()
{
    QGuiApplication::sync(); // Until the desktop has received the frame.
    m_output << "READY" << std::endl;
}

} // namespace clavo
