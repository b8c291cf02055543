// SPDX-License-Identifier: MIT
#pragma once

#include "input/Screens.h"

#include <memory>
#include <string>

namespace clavo
{

/// The monitors of an X11 session in native pixels, as RandR knows them; without RandR the desktop
/// as one screen.
///
/// The extents are kept until the server has told of a change, which is read only when they are
/// asked for: asking costs no round trip and changes wake nobody. There are none while the server
/// is lost. Thread: main.
class X11Screens final : public Screens
{
public:
    /// Watches the display; the session's own one if it is empty.
    explicit X11Screens(std::string display = {});
    ~X11Screens() override;

    [[nodiscard]] std::span<const ScreenExtent> extents() override;

private:
    class Watcher;
    std::unique_ptr<Watcher> m_watcher;
};

} // namespace clavo
