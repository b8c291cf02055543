// SPDX-License-Identifier: MIT
#pragma once

namespace clavo
{

/// Whether the session's X server lets this process in.
[[nodiscard]] bool isXServerThere();

} // namespace clavo
