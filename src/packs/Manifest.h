// SPDX-License-Identifier: MIT
#pragma once

#include <map>
#include <optional>
#include <string>
#include <string_view>

namespace clavo
{

/// The content of a pack's `pack.json`, as written.
struct Manifest {
    using SoundNames = std::map<std::string, std::string>; // Scancode as text → sound file name.

    std::string id;
    std::string name;
    std::string detail;
    std::string category;
    std::optional<std::string> credit;
    SoundNames press;
    SoundNames release;

    bool operator==(const Manifest&) const = default;
};

/// Reads a manifest from JSON. Nothing when the text is not JSON, or when a member other than
/// `credit` is missing, null or of another type. Members it does not know are passed over. A member
/// that is repeated counts once, with its last value. Memory grows with what is kept, not with the
/// depth of the text.
[[nodiscard]] std::optional<Manifest> parseManifest(std::string_view json);

} // namespace clavo
