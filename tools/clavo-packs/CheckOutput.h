// SPDX-License-Identifier: MIT
#pragma once

#include "clavo-packs/PackCheck.h"

#include <span>
#include <string>

namespace clavo
{

/// The result for people to read.
[[nodiscard]] std::string textOf(const PackCheck& check);

/// The results for programs: a JSON array with an object for each pack. Scancodes are numbers,
/// peaks in dB (null: silence), times in seconds.
[[nodiscard]] std::string jsonOf(std::span<const PackCheck> checks);

} // namespace clavo
