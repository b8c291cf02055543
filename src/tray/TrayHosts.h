// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <functional>
#include <optional>

namespace clavo
{

/// The ways in which a desktop shows an icon in its tray.
enum class TrayHost {
    none,
    statusNotifier, // Draws the icon and the menu itself, as described over D-Bus.
    xembed,         // Embeds a window of the program (X11).
};

/// What an XEmbed host reports about its tray.
struct TrayAppearance {
    struct Color {
        double red = 0; // 0 to 1, sRGB.
        double green = 0;
        double blue = 0;
    };

    bool showsThrough = false;        // The tray shows through transparent parts of a window.
    std::optional<Color> symbolColor; // The colour of the tray's symbols, if the host sets one.
};

/// The desktop's tray, which shows icons of running programs. A host may start after the program,
/// disappear, return, and be replaced by a host of another kind.
///
/// Thread: main, which runs a Qt event loop. Nothing polls: the program sleeps while no host
/// changes.
class TrayHosts
{
public:
    using Receiver = std::function<void(TrayHost)>;

    virtual ~TrayHosts() = default;

    /// Reports the kind of the present host soon, and then of every host that replaces it. Each
    /// report means that an icon made for an earlier host is lost. Called once.
    virtual void watch(Receiver receiver) = 0;

    /// The appearance of the present XEmbed host; the defaults if there is none.
    [[nodiscard]] virtual TrayAppearance appearance() = 0;

    /// Asks the XEmbed host, if there is one, to embed the window with this X11 number.
    virtual void dock(std::uint32_t window) = 0;
};

} // namespace clavo
