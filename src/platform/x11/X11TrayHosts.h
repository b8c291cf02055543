// SPDX-License-Identifier: MIT
#pragma once

#include "tray/TrayHosts.h"

#include <memory>
#include <string>

namespace clavo
{

/// The XEmbed host of an X11 session: the owner of its system-tray selection. Watches the display,
/// the session's own one if it is empty.
///
/// The first answer is given at once. Only that answer and the tray's look wait for the X server.
/// Once the server is lost there is no host. A window to dock belongs to the running
/// QGuiApplication.
[[nodiscard]] std::unique_ptr<TrayHosts> makeX11TrayHosts(std::string display = {});

} // namespace clavo
