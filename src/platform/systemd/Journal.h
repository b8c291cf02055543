// SPDX-License-Identifier: MIT
#pragma once

#include "log/Log.h"

namespace clavo
{

/// Writes lines to the system's journal. Null when no journal runs.
[[nodiscard]] log::Sink journalSink();

} // namespace clavo
