// SPDX-License-Identifier: MIT
#pragma once

#include <functional>
#include <optional>

namespace clavo
{

/// What the user has set for the look of all programs, where the desktop tells.
struct AppearancePreference {
    struct Color {
        double red = 0; // 0 to 1, sRGB.
        double green = 0;
        double blue = 0;

        bool operator==(const Color&) const = default;
    };

    std::optional<bool> isDark;
    std::optional<Color> accent;

    bool operator==(const AppearancePreference&) const = default;
};

/// The desktop's settings for the look of programs.
///
/// Thread: main, which runs a Qt event loop. Nothing waits for the desktop.
class AppearanceSettings
{
public:
    using Receiver = std::function<void(const AppearancePreference&)>;

    virtual ~AppearanceSettings() = default;

    /// Tells the settings soon, and then at every change. A desktop that has no such settings tells
    /// nothing. Called once.
    virtual void watch(Receiver receiver) = 0;
};

} // namespace clavo
