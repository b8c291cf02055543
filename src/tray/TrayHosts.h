// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <functional>
#include <optional>

namespace clavo
{

/// The ways in which a desktop takes an icon into its tray.
enum class TrayHost {
    none,
    statusNotifier, // Draws the icon and the menu itself, from what it is told over D-Bus.
    xembed,         // Takes in a window of ours (X11).
};

/// What an XEmbed host tells of the tray that its windows are in.
struct TrayAppearance {
    struct Color {
        double red = 0; // 0 to 1, sRGB.
        double green = 0;
        double blue = 0;
    };

    bool showsThrough = false;        // The tray is seen where a window is transparent.
    std::optional<Color> symbolColor; // Of the symbols in it, where the host has one.
};

/// What shows the icons of running programs. It may come after the program, vanish, return and be
/// replaced by one of another kind.
///
/// Thread: main, which runs a Qt event loop. Nothing wakes up while the hosts stay as they are.
class TrayHosts
{
public:
    using Receiver = std::function<void(TrayHost)>;

    virtual ~TrayHosts() = default;

    /// Tells the kind of host that an icon is to be made for: the present one soon, and then every
    /// one that takes its place. Each call means that the icon made after the last one is lost.
    /// Called once.
    virtual void watch(Receiver receiver) = 0;

    /// How the present XEmbed host looks; as if it had told nothing where there is none.
    [[nodiscard]] virtual TrayAppearance appearance() = 0;

    /// Asks the XEmbed host to take in a window, by its X11 number. Nothing happens where there is
    /// none.
    virtual void dock(std::uint32_t window) = 0;
};

} // namespace clavo
