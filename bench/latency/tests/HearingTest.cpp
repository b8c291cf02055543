// SPDX-License-Identifier: MIT
#include "latency/Hearing.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <chrono>
#include <cstddef>

namespace clavo::latency
{
namespace
{

using namespace std::chrono_literals;
using testing::Eq;
using testing::Optional;

constexpr std::size_t cycleFrames = 48; // 1 ms.
constexpr Listening listening = {.floor = 0.01F, .early = 1ms};

Moment at(nanoseconds time)
{
    return Moment(1s) + time;
}

/// Silence whose frame 0 was played at at(0ms), and whose cycles are all on time.
Recording silence(std::size_t cycles)
{
    Recording recording;
    recording.samples.resize(2 * cycles * cycleFrames);
    for (std::size_t i = 0; i < cycles; ++i) {
        recording.cycles.push_back({.start = at(i * 1ms),
                                    .position = 7000 + i * cycleFrames,
                                    .firstFrame = i * cycleFrames,
                                    .frames = cycleFrames});
    }
    return recording;
}

void play(Recording& recording, std::size_t frame, float level, std::size_t frames = 1)
{
    std::fill_n(recording.samples.begin() + static_cast<std::ptrdiff_t>(2 * frame), 2 * frames,
                level);
}

TEST(Recording, AFrameWasPlayedAtItsPlaceInItsCycle)
{
    const auto recording = silence(3);

    EXPECT_EQ(recording.timeOf(0), at(0ms));
    EXPECT_EQ(recording.timeOf(cycleFrames + 24), at(1500us));
}

TEST(Recording, AFrameReadLateWasPlayedInTheCycleBefore)
{
    auto recording = silence(3);
    recording.cyclesLate = 1;

    EXPECT_EQ(recording.timeOf(cycleFrames + 24), at(500us));
}

TEST(Recording, AMissingCycleDoesNotMoveTheFramesAfterIt)
{
    auto recording = silence(3);
    recording.cyclesLate = 1;
    recording.cycles[2].start = at(5ms);

    EXPECT_EQ(recording.timeOf(2 * cycleFrames), at(4ms));
}

TEST(Recording, AFrameIsFoundByItsTime)
{
    auto recording = silence(3);
    EXPECT_EQ(recording.frameAt(at(1500us)), cycleFrames + 24);
    EXPECT_EQ(recording.frameAt(at(1500us + 1ns)), cycleFrames + 25);
    EXPECT_EQ(recording.frameAt(at(-1ms)), 0U);
    EXPECT_EQ(recording.frameAt(at(1s)), recording.frames());

    recording.cyclesLate = 1;
    EXPECT_EQ(recording.frameAt(at(500us)), cycleFrames + 24);
}

TEST(Recording, CyclesThatAreMissingAreCountedFromAMomentOn)
{
    auto recording = silence(10);
    recording.cycles[2].position += 1;
    for (std::size_t i = 6; i < 10; ++i)
        recording.cycles[i].position += cycleFrames;

    EXPECT_EQ(recording.gaps(at(0ms)), 3U);
    EXPECT_EQ(recording.gaps(at(5ms)), 1U);
}

TEST(Latency, RunsFromTheEventToTheFirstLoudSample)
{
    auto recording = silence(100);
    play(recording, 20 * cycleFrames, 0.5F);

    EXPECT_THAT(latency(recording, at(18200us), at(60ms), listening), Optional(Eq(1800us)));
}

TEST(Latency, MayBeBelowZeroWhereThePeriodWasRenderedLate)
{
    auto recording = silence(100);
    play(recording, 20 * cycleFrames, 0.5F);

    EXPECT_THAT(latency(recording, at(20500us), at(60ms), listening), Optional(Eq(-500us)));
}

TEST(Latency, OfSilenceIsNone)
{
    EXPECT_THAT(latency(silence(100), at(18ms), at(60ms), listening), Eq(std::nullopt));
}

TEST(Latency, IsNoneWhenTheSoundBelongsToTheNextEvent)
{
    auto recording = silence(100);
    play(recording, 62 * cycleFrames, 0.5F);

    EXPECT_THAT(latency(recording, at(18ms), at(60ms), listening), Eq(std::nullopt));
}

TEST(Latency, IsNoneWhenOnlyTheSoundBeforeRingsOn)
{
    auto recording = silence(100);
    play(recording, 10 * cycleFrames, 0.5F, 20 * cycleFrames);

    EXPECT_THAT(latency(recording, at(18ms), at(60ms), listening), Eq(std::nullopt));
}

TEST(Latency, IsTakenToWhatRisesAboveTheRinging)
{
    auto recording = silence(100);
    play(recording, 10 * cycleFrames, 0.1F, 20 * cycleFrames);
    play(recording, 20 * cycleFrames, 0.3F);

    EXPECT_THAT(latency(recording, at(18ms), at(60ms), listening), Optional(Eq(2ms)));
}

TEST(Distribution, TellsTheMiddleTheTailAndTheWorst)
{
    std::vector<nanoseconds> values;
    for (int i = 200; i >= 1; --i)
        values.emplace_back(i);

    const auto result = distribution(values);

    EXPECT_EQ(result.median, 100ns);
    EXPECT_EQ(result.percentile99, 198ns);
    EXPECT_EQ(result.maximum, 200ns);
}

TEST(Pulses, ThatBeginTogetherAreCountedByTheirHeight)
{
    auto recording = silence(10);
    play(recording, 10, 0.02F);
    play(recording, 20, 0.061F, 3);
    play(recording, 100, 0.1F);

    EXPECT_EQ(pulses(recording, 0, 0.02F), 1U + 3U + 5U);
    EXPECT_EQ(pulses(recording, 15, 0.02F), 3U + 5U);
}

} // namespace
} // namespace clavo::latency
