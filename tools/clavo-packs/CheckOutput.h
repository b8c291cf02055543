// SPDX-License-Identifier: MIT
#pragma once

#include "clavo-packs/PackCheck.h"

#include <span>
#include <string>

namespace clavo
{

/// What was found, for people.
[[nodiscard]] std::string textOf(const PackCheck& check);

/// The same of all packs for programs: a JSON array with an object for each. Scancodes are numbers,
/// peaks in dB (null: silence), times in seconds.
[[nodiscard]] std::string jsonOf(std::span<const PackCheck> checks);

} // namespace clavo
