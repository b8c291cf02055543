// SPDX-License-Identifier: MIT
// A recording of a pack, in any format that the decoder knows.
#include "fakes/TemporaryFolder.h"
#include "fuzz/Input.h"
#include "packs/PlaybackRate.h"
#include "packs/SoundFile.h"

#include <algorithm>
#include <cmath>

using namespace clavo;
using fuzz::require;

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    static const TemporaryFolder folder;
    const auto file = folder.path() / "sound.wav";
    fuzz::write(file, fuzz::textOf(data, size));

    require(!loadSound(file, {.channels = 2}), "all sound is mono");
    const auto samples = loadSound(file, AudioFormat{});
    if (!samples)
        return 0;
    const auto isFinite = [](float sample) { return std::isfinite(sample); };
    require(std::ranges::all_of(*samples, isFinite), "a sound has finite samples");
    require(samples->size() <= 120 * 44100 + 1, "a sound is at most two minutes long");
    for (const double rate : playbackRates) {
        std::vector<float> replayed(replayedLength(samples->size(), rate));
        replay(*samples, rate, replayed);
        require(rate != 1 || replayed == *samples, "the rate 1 changes nothing");
    }
    return 0;
}
