// SPDX-License-Identifier: MIT
#pragma once

namespace clavo
{

/// Whether the program is built with X11.
[[nodiscard]] bool isX11Supported();

/// Whether the session's X server accepts a connection.
[[nodiscard]] bool isXServerThere();

} // namespace clavo
