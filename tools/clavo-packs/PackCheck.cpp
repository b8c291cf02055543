// SPDX-License-Identifier: MIT
#include "clavo-packs/PackCheck.h"

#include "clavo-packs/ManifestCheck.h"
#include "keyboard/KeyLayout.h"
#include "packs/PackLibrary.h"
#include "packs/SoundFile.h"
#include "packs/SoundPack.h"
#include "synth/AudioBuffer.h"

#include <fmt/format.h>
#include <fmt/ranges.h>

#include <algorithm>
#include <cmath>
#include <map>
#include <set>
#include <span>
#include <system_error>
#include <utility>

namespace clavo
{
namespace
{

namespace fs = std::filesystem;

constexpr double sampleRate = samplesPerSecond;
constexpr double longestSilence = 0.018; // Seconds: later than that, a key is felt to lag.
constexpr double longestSound = 3.01;    // Seconds; the importer cuts off what is longer than 3.
constexpr double lowestPeak = -40;       // In dB.
constexpr int clippedRun = 4;            // Samples in a row.
constexpr float fullScale = 0.999F;

double seconds(std::ptrdiff_t samples)
{
    return static_cast<double>(samples) / sampleRate;
}

PackCheck::Sound measured(const fs::path& file, std::span<const float> samples)
{
    const auto size = [](float sample) { return std::abs(sample); };
    const float peak = samples.empty() ? 0 : size(std::ranges::max(samples, {}, size));
    const auto heard = std::ranges::find_if(
        samples, [peak](float sample) { return sample != 0 && std::abs(sample) >= peak / 100; });
    return {.file = file,
            .peak = 20 * std::log10(static_cast<double>(peak)),
            .silence = seconds(heard - samples.begin()),
            .length = seconds(std::ssize(samples))};
}

/// Whether the sound stays at full scale, as one does that was recorded too loud.
bool isClipped(std::span<const float> samples)
{
    const auto reaches = [](float sample, float level) { return std::abs(sample) >= level; };
    return std::search_n(samples.begin(), samples.end(), clippedRun, fullScale, reaches) !=
           samples.end();
}

std::vector<std::string> faultsOf(const PackCheck::Sound& sound, std::span<const float> samples)
{
    if (samples.empty())
        return {"holds no samples: its keys stay silent"};
    if (std::isinf(sound.peak))
        return {"is silent"};
    std::vector<std::string> faults;
    if (sound.peak < lowestPeak)
        faults.push_back(fmt::format("is hardly heard: it peaks at {:.0f} dB", sound.peak));
    if (isClipped(samples))
        faults.emplace_back("clips: it stays at full scale");
    if (sound.silence > longestSilence)
        faults.push_back(
            fmt::format("starts with {:.0f} ms of silence, felt as a delay", 1000 * sound.silence));
    if (sound.length > longestSound)
        faults.push_back(fmt::format("goes on for {:.1f} s", sound.length));
    return faults;
}

std::set<std::int64_t> scancodesOfKeys()
{
    std::set<std::int64_t> scancodes;
    for (const auto& [code, key] : KeyLayout::table())
        scancodes.insert(key.scancode);
    return scancodes;
}

/// Which sounds SoundBank::buffer() plays for the keys of the layout.
PackCheck::Coverage coverageOf(const std::map<std::int64_t, SoundBank::Variants>& sounds, bool down)
{
    PackCheck::Coverage coverage;
    for (const std::int64_t scancode : scancodesOfKeys()) {
        const auto own = sounds.find(scancode);
        const bool hasRow =
            std::ranges::any_of(fallbackScancodes(KeyLayout::info(scancode).slot),
                                [&](std::int64_t other) { return sounds.contains(other); });
        auto& keys = own != sounds.end() ? own->second.empty() ? coverage.silent : coverage.own
                     : hasRow            ? coverage.row
                     : down && !sounds.empty() ? coverage.any
                                               : coverage.silent;
        keys.push_back(scancode);
    }
    return coverage;
}

void checkScancodes(PackCheck& check, std::string_view map, const SoundPack::SoundNames& sounds)
{
    std::set<std::int64_t> unknown;
    for (const auto& [scancode, name] : sounds)
        unknown.insert(scancode);
    for (const std::int64_t scancode : scancodesOfKeys())
        unknown.erase(scancode);
    if (!unknown.empty())
        check.remarks.push_back(
            {"pack.json", fmt::format("\"{}\" has sounds for scancodes that no key has: {}", map,
                                      fmt::join(unknown, ", "))});
}

bool isOutside(const fs::path& folder, const fs::path& path)
{
    std::error_code error;
    const auto root = fs::weakly_canonical(folder, error);
    const auto relative = fs::weakly_canonical(path, error).lexically_relative(root);
    return !error && !relative.empty() && *relative.begin() == "..";
}

void checkSounds(PackCheck& check, const SoundPack& pack)
{
    std::set<std::string> names;
    for (const auto* const sounds : {&pack.press, &pack.release}) {
        for (const auto& [scancode, name] : *sounds)
            names.insert(name);
    }
    for (const std::string& name : names) {
        const fs::path file = "sounds/" + name + ".wav";
        const auto path = check.folder / file;
        if (isOutside(check.folder, path))
            check.problems.push_back({file, "leads out of the pack"});
        const auto samples = loadSound(path, {});
        std::error_code ignored;
        if (samples) {
            const auto& sound = check.sounds.emplace_back(measured(file, *samples));
            for (const std::string& fault : faultsOf(sound, *samples))
                check.problems.push_back({file, fault});
        } else if (!fs::exists(path, ignored)) {
            check.problems.push_back({file, "is missing"});
        } else {
            check.problems.push_back({file, "is no sound, or none of at most two minutes and 64 "
                                            "MiB, that can be read"});
        }
    }
    if (check.sounds.empty())
        check.problems.push_back({"pack.json", "leads to no sound: the pack is silent"});
}

} // namespace

PackCheck checkPack(const fs::path& folder)
{
    PackCheck check;
    check.folder = folder;
    const auto manifest = checkManifest(folder / "pack.json");
    for (const std::string& problem : manifest.problems)
        check.problems.push_back({"pack.json", problem});
    for (const std::string& remark : manifest.remarks)
        check.remarks.push_back({"pack.json", remark});
    const auto pack =
        manifest.isAccepted ? SoundPack::load(folder, true) : std::optional<SoundPack>();
    if (!pack)
        return check;
    check.name = pack->name;
    check.id = pack->id;
    checkScancodes(check, "press", pack->press);
    checkScancodes(check, "release", pack->release);
    checkSounds(check, *pack);
    const auto bank = PackLibrary::makeBank(*pack, {});
    check.press = coverageOf(bank.press, true);
    check.release = coverageOf(bank.release, false);
    if (bank.leftOut > 0)
        check.problems.push_back(
            {"pack.json", fmt::format("leaves {} presses and releases without their sounds: Clavo "
                                      "decodes at most {} MiB of a pack, five speeds a sound",
                                      bank.leftOut, PackLibrary::bankBudget >> 20U)});
    return check;
}

void compareIds(std::span<PackCheck> packs)
{
    for (PackCheck& pack : packs) {
        for (const PackCheck& other : packs) {
            std::error_code ignored;
            if (pack.name && other.name && pack.id == other.id &&
                !fs::equivalent(pack.folder, other.folder, ignored))
                pack.problems.push_back(
                    {"pack.json",
                     fmt::format("has the same id as {}: only one of them can be selected",
                                 other.folder.string())});
        }
    }
}

} // namespace clavo
