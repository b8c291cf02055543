// SPDX-License-Identifier: MIT
#pragma once

#include "app/AppState.h"
#include "app/LanguageSetting.h"

#include <QObject>
#include <QQmlEngine>
#include <QQuickWindow>
#include <QRect>

#include <iosfwd>
#include <memory>
#include <optional>
#include <string_view>
#include <vector>

class QScreen;

namespace clavo
{

struct ScreenArea;

/// The program's own windows with demonstration data, for somebody to film. Thread: main.
class LiveScene : public QObject
{
    Q_OBJECT

public:
    enum class Scene { menu, stats, general };

    [[nodiscard]] static std::optional<Scene> named(std::string_view name);

    /// The state is in its demonstration. All outlive the scene, and the scene its windows.
    LiveScene(AppState& state, LanguageSetting& language, std::ostream& output);

    /// Opens the scene's window in front of all others. Prints the line "READY" once its first
    /// frame is on the screen.
    void show(Scene scene);

private:
    QQuickWindow& menuPanel(const QScreen& screen);
    QQuickWindow& settingsWindow(Scene tab, const QScreen& screen);
    QQuickWindow& made(const char* file, QVariantMap properties);
    void tellReady();

    AppState& m_state;
    LanguageSetting& m_language;
    std::ostream& m_output;
    QQmlEngine m_engine;
    std::vector<std::unique_ptr<QQuickWindow>> m_windows;
};

/// Where the program's icon would be: in the corner of the screen where the desktop's own panel
/// ends with its clock.
[[nodiscard]] QRect iconPlace(const ScreenArea& screen);

} // namespace clavo
