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
/// need exist yet. A change keeps what others have written to the file since it was read, also
/// members that this version does not know; the store takes it over at the next start.
///
/// A file that holds no JSON object is set aside as NAME.broken with one log line: at the start the
/// defaults apply, later the next change writes all settings anew. An earlier file set aside stays.
[[nodiscard]] std::unique_ptr<DefaultsStore>
makeFileDefaultsStore(std::filesystem::path file,
                      DefaultsChanges changes = DefaultsChanges::written);

} // namespace clavo
