// SPDX-License-Identifier: MIT
#pragma once

#include "app/DefaultsStore.h"

#include <filesystem>
#include <memory>

namespace clavo
{

/// What becomes of changes: they reach the file, or they last as long as the store and leave the
/// file alone, even one that would be set aside.
enum class DefaultsChanges { written, forgotten };

/// The settings in one JSON file, replaced whole at every change. Neither the file nor its folder
/// need exist yet. Members that this version does not know are kept.
///
/// A file that holds no JSON object is set aside as NAME.broken with one log line, and the defaults
/// apply.
[[nodiscard]] std::unique_ptr<DefaultsStore>
makeFileDefaultsStore(std::filesystem::path file,
                      DefaultsChanges changes = DefaultsChanges::written);

} // namespace clavo
