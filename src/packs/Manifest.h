// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <map>
#include <optional>
#include <string>
#include <string_view>

namespace clavo
{

/// A manifest of a thousand keys has 50 kB. Larger files than this are not read: reading one keeps
/// the keys waiting.
inline constexpr std::uint64_t maximumManifestSize = 1U << 20U;

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
/// `credit` is missing, null or of the wrong type. Unknown members are ignored. Of a repeated
/// member the last value counts. Memory use depends on what is kept, not on the depth of the text.
[[nodiscard]] std::optional<Manifest> parseManifest(std::string_view json);

/// A scancode as written in a manifest: a decimal number with an optional sign and nothing else.
[[nodiscard]] std::optional<std::int64_t> parseScancode(std::string_view text);

} // namespace clavo
