// SPDX-License-Identifier: MIT
#include "latency/Recording.h"

#include <sndfile.hh>

#include <algorithm>
#include <cmath>
#include <iterator>

namespace clavo::latency
{

Moment Recording::timeOf(std::size_t frame) const
{
    const auto after = std::ranges::upper_bound(cycles, frame, {}, &Cycle::firstFrame);
    const auto& cycle = *std::prev(after);
    // Not the start of the cycle recorded before: that may not be the one just before.
    const auto frames = static_cast<std::int64_t>(frame - cycle.firstFrame) -
                        static_cast<std::int64_t>(cyclesLate) * cycle.frames;
    return cycle.start + nanoseconds(frames * 1'000'000'000 / rate);
}

std::size_t Recording::frameAt(Moment moment) const
{
    std::size_t first = 0;
    std::size_t count = frames();
    while (count > 0) {
        const auto step = count / 2;
        if (timeOf(first + step) < moment) {
            first += step + 1;
            count -= step + 1;
        } else {
            count = step;
        }
    }
    return first;
}

float Recording::level(std::size_t frame) const
{
    return std::max(std::abs(samples[2 * frame]), std::abs(samples[2 * frame + 1]));
}

float Recording::peak(std::size_t first, std::size_t last) const
{
    float highest = 0;
    for (auto frame = first; frame < std::min(last, frames()); ++frame)
        highest = std::max(highest, level(frame));
    return highest;
}

std::size_t Recording::gaps(Moment since) const
{
    std::size_t count = 0;
    for (std::size_t i = 1; i < cycles.size(); ++i) {
        const auto expected = cycles[i - 1].position + cycles[i - 1].frames;
        if (cycles[i].start >= since && cycles[i].position != expected)
            ++count;
    }
    return count;
}

bool writeWav(const std::filesystem::path& file, const Recording& recording)
{
    SndfileHandle wav(file.c_str(), SFM_WRITE, SF_FORMAT_WAV | SF_FORMAT_FLOAT, 2,
                      static_cast<int>(recording.rate));
    const auto frames = static_cast<sf_count_t>(recording.frames());
    return wav && wav.writef(recording.samples.data(), frames) == frames;
}

} // namespace clavo::latency
