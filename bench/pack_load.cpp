// SPDX-License-Identifier: MIT
// How long a pack takes to load, against a floor in the same run that only decodes the same files.
#include "packs/PackLibrary.h"

#include <fmt/format.h>
#include <sndfile.h>

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <ctime>
#include <filesystem>
#include <set>
#include <string>
#include <string_view>
#include <vector>

namespace
{

constexpr int runs = 101;

/// Decodes one file in the plain way and keeps its samples.
std::vector<float> decoded(const std::filesystem::path& file)
{
    SF_INFO info{};
    SNDFILE* const opened = sf_open(file.c_str(), SFM_READ, &info);
    if (opened == nullptr)
        return {};
    std::vector<float> samples(static_cast<std::size_t>(info.frames * info.channels));
    sf_readf_float(opened, samples.data(), info.frames);
    sf_close(opened);
    return samples;
}

std::set<std::filesystem::path> filesOf(const clavo::SoundPack& pack)
{
    std::set<std::filesystem::path> files;
    for (const auto* const names : {&pack.press, &pack.release}) {
        for (const auto& [scancode, name] : *names)
            files.insert(pack.folder / "sounds" / (name + ".wav"));
    }
    return files;
}

/// What a piece of work takes, in milliseconds.
struct Cost {
    double wall = 0;
    double processor = 0; // Not disturbed by what else runs on the machine.
};

double milliseconds(std::clock_t ticks)
{
    return 1e3 * static_cast<double>(ticks) / CLOCKS_PER_SEC;
}

template <typename Work> Cost costOf(Work work)
{
    const auto wall = std::chrono::steady_clock::now();
    const auto processor = std::clock();
    const auto result = work(); // Freed after the clocks have been read.
    const auto processorEnd = std::clock();
    const auto wallEnd = std::chrono::steady_clock::now();
    return {std::chrono::duration<double, std::milli>(wallEnd - wall).count(),
            milliseconds(processorEnd - processor)};
}

double median(std::vector<Cost> costs, auto kind)
{
    std::ranges::sort(costs, {}, kind);
    return costs[costs.size() / 2].*kind;
}

void print(std::string_view what, double bank, double floor)
{
    fmt::print("{:<17} {:>9.2f} ms {:>9.2f} ms {:>8.2f}\n", what, bank, floor, bank / floor);
}

} // namespace

int main(int argc, char* argv[])
{
    const auto pack = clavo::SoundPack::load(argc > 1 ? argv[1] : CLAVO_DEFAULT_PACK, false);
    if (!pack) {
        fmt::print(stderr, "pack_load: no pack there\nUsage: pack_load [PACK_FOLDER]\n");
        return 1;
    }
    const auto files = filesOf(*pack);
    std::vector<Cost> floors;
    std::vector<Cost> banks;
    floors.reserve(runs);
    banks.reserve(runs);
    for (int run = 0; run < runs; ++run) {
        banks.push_back(costOf([&] { return clavo::PackLibrary::makeBank(*pack, {}); }));
        floors.push_back(costOf([&] {
            std::vector<std::vector<float>> sounds;
            sounds.reserve(files.size());
            for (const auto& file : files)
                sounds.push_back(decoded(file));
            return sounds;
        }));
    }
    fmt::print("{}: {} files, {} runs\n", pack->id, files.size(), runs);
    fmt::print("{:<17} {:>12} {:>12} {:>8}\n", "", "makeBank", "decoding", "ratio");
    print("first, wall", banks.front().wall, floors.front().wall);
    print("median, wall", median(banks, &Cost::wall), median(floors, &Cost::wall));
    print("median, processor", median(banks, &Cost::processor), median(floors, &Cost::processor));
    return 0;
}
