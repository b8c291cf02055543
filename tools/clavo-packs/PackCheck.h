// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <filesystem>
#include <optional>
#include <span>
#include <string>
#include <vector>

namespace clavo
{

/// How the program reads a pack folder.
struct PackCheck {
    /// What is wrong with a file of the pack, or has no effect in it.
    struct Problem {
        std::filesystem::path file;
        std::string reason;

        bool operator==(const Problem&) const = default;
    };

    /// Which sounds the keys of the layout have in one direction, by scancode.
    struct Coverage {
        std::vector<std::int64_t> own;    // A sound of their own.
        std::vector<std::int64_t> row;    // That of another key of their slot, at random.
        std::vector<std::int64_t> any;    // That of any key, at random.
        std::vector<std::int64_t> silent; // None.
    };

    /// A file that loads.
    struct Sound {
        std::filesystem::path file;
        double peak = 0;    // In dB of full scale; minus infinity for silence.
        double silence = 0; // Seconds before it is heard.
        double length = 0;  // Seconds.
    };

    std::filesystem::path folder;
    std::optional<std::string> name; // Nothing when the folder is no pack.
    std::string id;
    Coverage press;
    Coverage release;
    std::vector<Sound> sounds;
    std::vector<Problem> problems;
    std::vector<Problem> remarks;
};

/// Reads a folder as the program would, and every sound that it names. A key without a sound of its
/// own is no problem.
[[nodiscard]] PackCheck checkPack(const std::filesystem::path& folder);

/// Adds a problem to each of the packs whose id another one has.
void compareIds(std::span<PackCheck> packs);

} // namespace clavo
