// SPDX-License-Identifier: MIT
#pragma once

#include "packs/BankLoader.h"
#include "packs/SoundPack.h"
#include "synth/AudioBuffer.h"
#include "synth/SoundBank.h"
#include "synth/SwitchSynth.h"

#include <cstdint>
#include <filesystem>
#include <set>
#include <vector>

namespace clavo
{

/// The folders that contain packs.
struct PackFolders {
    std::filesystem::path builtIn; // Empty when the application has no resources.
    std::filesystem::path custom;  // The user's.
};

} // namespace clavo

/// Finds sound packs on disk and turns them into sounds ready to play. Stateless; decodes on the
/// caller's thread and silently skips what cannot be read.
namespace clavo::PackLibrary
{

/// The user's folder of packs below the application support folder. Created if missing.
[[nodiscard]] std::filesystem::path customFolder(const std::filesystem::path& applicationSupport);

/// The pack folders for these resources (an empty path for none) and this application support
/// folder. Creates the user's folder if missing.
[[nodiscard]] PackFolders folders(const std::filesystem::path& resources,
                                  const std::filesystem::path& applicationSupport);

/// The built-in packs by category and name, then the user's by name.
[[nodiscard]] std::vector<SoundPack> allPacks(const PackFolders& folders,
                                              SoundPack::Part part = SoundPack::Part::all);

/// The packs directly inside a folder, hidden ones included, in the order in which the folder lists
/// them. None for an empty path.
[[nodiscard]] std::vector<SoundPack> packs(const std::filesystem::path& folder, bool isCustom,
                                           SoundPack::Part part = SoundPack::Part::all);

/// Decodes a pack's sounds before it returns; if `only` is given, of its scancodes alone. See
/// BankLoader for what is loaded.
[[nodiscard]] SoundBank makeBank(const SoundPack& pack, const AudioFormat& format,
                                 const std::set<std::int64_t>* only = nullptr);

/// The samples as a sound of the format; null when there are none or the format is not mono.
[[nodiscard]] AudioBufferPtr buffer(std::vector<float> samples, const AudioFormat& format);

/// The five variants of a synthesized stroke of a home-row key; none if the stroke has no length.
[[nodiscard]] SoundBank::Variants synthVariants(const SwitchProfile& profile, bool release,
                                                const AudioFormat& format);

/// The five variants of a mouse button's press or release.
[[nodiscard]] SoundBank::Variants mouseVariants(bool release, const AudioFormat& format);

} // namespace clavo::PackLibrary
