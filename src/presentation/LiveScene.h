// SPDX-License-Identifier: MIT
#pragma once

#include "app/AppState.h"
#include "app/LanguageSetting.h"

#include <QObject>
#include <QQmlEngine>
#include <QQuickWindow>
#include <QRect>
#include <QVariantMap>

#include <iosfwd>
#include <memory>
#include <optional>
#include <string_view>
#include <vector>

class QScreen;

namespace clavo
{

struct ScreenArea;

/// The program's own windows with demonstration data, for films. Thread: main.
class LiveScene : public QObject
{
    Q_OBJECT

public:
    enum class Scene { menu, stats, general };

    [[nodiscard]] static std::optional<Scene> named(std::string_view name);

    /// The state has demonstration data. All outlive the scene, which owns its windows.
    LiveScene(AppState& state, LanguageSetting& language, std::ostream& output);

    /// Opens the scene's window in front of all others. Prints the line "READY" when its first
    /// frame is on the screen.
    void show(Scene scene);

private:
    QQuickWindow& menuPanel(const QScreen& screen);
    QQuickWindow& settingsWindow(Scene tab, const QScreen& screen);
    QQuickWindow& addWindow(const char* file, QVariantMap properties);
    void printReady();

    AppState& m_state;
    LanguageSetting& m_language;
    std::ostream& m_output;
    QQmlEngine m_engine;
    std::vector<std::unique_ptr<QQuickWindow>> m_windows;
};

/// The place of an icon in the desktop's tray, near the end of the desktop's own panel. On a screen
/// without one, the top right corner.
[[nodiscard]] QRect iconPlace(const ScreenArea& screen);

} // namespace clavo
