// SPDX-License-Identifier: MIT
#pragma once

#include <functional>
#include <optional>

namespace clavo
{

/// The user's preferences for the appearance of programs, as far as the desktop reports them.
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

/// The desktop's settings for the appearance of programs. No call waits for the desktop.
/// Thread: main, which runs a Qt event loop.
class AppearanceSettings
{
public:
    using Receiver = std::function<void(const AppearancePreference&)>;

    virtual ~AppearanceSettings() = default;

    /// Reports the settings soon, and then after every change. A desktop without such settings
    /// reports nothing. Called once.
    virtual void watch(Receiver receiver) = 0;
};

} // namespace clavo
