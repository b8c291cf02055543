// SPDX-License-Identifier: MIT
#pragma once

namespace clavo
{

/// Whether the session's X server accepts a connection.
[[nodiscard]] bool isXServerThere();

} // namespace clavo
