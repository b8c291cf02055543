// SPDX-License-Identifier: MIT
#include "clavo-type/Rhythm.h"

#include <gmock/gmock.h>

#include <algorithm>
#include <set>
#include <string>
#include <string_view>

namespace clavo
{
namespace
{

using namespace std::chrono_literals;
using std::chrono::microseconds;
using testing::ElementsAre;
using testing::IsEmpty;

constexpr std::int64_t leftShift = 56;
constexpr std::int64_t rightShift = 60;
constexpr std::uint64_t seed = 7;

std::vector<KeyEvent> even(std::string_view text, double wpm = 80)
{
    return evenRhythm(keystrokesOf(text).strokes, wpm);
}

std::vector<KeyEvent> human(std::string_view text, double wpm = 80, std::uint64_t number = seed)
{
    return humanRhythm(keystrokesOf(text).strokes, wpm, number);
}

KeyEvent down(microseconds time, std::int64_t code)
{
    return {time, {.code = code, .down = true}};
}

KeyEvent up(microseconds time, std::int64_t code)
{
    return {time, {.code = code, .down = false}};
}

/// When the keys of characters go down.
std::vector<microseconds> presses(const std::vector<KeyEvent>& events)
{
    std::vector<microseconds> times;
    for (const auto& [time, key] : events) {
        if (key.down && key.code != leftShift && key.code != rightShift)
            times.push_back(time);
    }
    return times;
}

/// Every key goes down once before it comes up, and none is down at the end.
testing::AssertionResult areWhole(const std::vector<KeyEvent>& events)
{
    std::set<std::int64_t> held;
    for (const auto& [time, key] : events) {
        const bool changed = key.down ? held.insert(key.code).second : held.erase(key.code) == 1;
        if (!changed)
            return testing::AssertionFailure() << "key " << key.code << " at " << time.count();
    }
    return testing::AssertionResult(held.empty());
}

/// The shift state in which each character's key goes down.
std::vector<bool> shiftStates(const std::vector<KeyEvent>& events)
{
    std::vector<bool> states;
    bool isHeld = false;
    for (const auto& [time, key] : events) {
        if (key.code == leftShift || key.code == rightShift)
            isHeld = key.down;
        else if (key.down)
            states.push_back(isHeld);
    }
    return states;
}

std::string repeated(std::string_view text, int times)
{
    std::string all;
    for (int i = 0; i < times; ++i)
        all += text;
    return all;
}

constexpr std::string_view sentence =
    "The quick brown fox, A bit TIRED of jumping, sleeps. \"Why not?\" said 23 lazy dogs:\n";

TEST(EvenRhythm, PressesAKeyAfterTheSameTime)
{
    EXPECT_THAT(even("as", 60),
                ElementsAre(down(0ms, 0), up(80ms, 0), down(200ms, 1), up(280ms, 1)));
}

TEST(EvenRhythm, ReleasesBeforeTheNextPressHoweverFast)
{
    EXPECT_THAT(even("as", 1000),
                ElementsAre(down(0ms, 0), up(6ms, 0), down(12ms, 1), up(18ms, 1)));
}

TEST(EvenRhythm, HoldsShiftWithTheOtherHandThroughARun)
{
    EXPECT_THAT(even("JKa", 60),
                ElementsAre(down(0ms, leftShift), down(60ms, 38), up(140ms, 38), down(260ms, 40),
                            up(340ms, leftShift), up(340ms, 40), down(460ms, 0), up(540ms, 0)));
    EXPECT_EQ(even("A").front(), down(0ms, rightShift));
}

TEST(EvenRhythm, LastsAsLongAsTheTempoSays)
{
    const auto times = presses(even(repeated("word ", 100), 100));

    EXPECT_EQ(times.back() - times.front(), 60s - 120ms);
}

TEST(EvenRhythm, OfNothingIsNothing)
{
    EXPECT_THAT(even(""), IsEmpty());
    EXPECT_THAT(human(""), IsEmpty());
}

TEST(HumanRhythm, LastsAsLongAsTheTempoSays)
{
    const auto times = presses(human(repeated(sentence, 10), 70));

    ASSERT_EQ(times.size(), sentence.size() * 10);
    const auto expected = static_cast<double>(times.size() - 1) * 60 / (5 * 70);
    const std::chrono::duration<double> lasted = times.back() - times.front();
    EXPECT_NEAR(lasted.count(), expected, 0.0001);
}

TEST(HumanRhythm, TypesOneCharacterToo)
{
    const auto events = human("a");
    ASSERT_EQ(events.size(), 2U);
    EXPECT_EQ(events.front(), down(0ms, 0));
    EXPECT_GT(events.back().time, 40ms); // Held as long as any other key.
}

TEST(HumanRhythm, IsRepeatedByItsSeed)
{
    EXPECT_EQ(human(sentence), human(sentence));
    EXPECT_NE(human(sentence), human(sentence, 80, seed + 1));
}

TEST(HumanRhythm, PressesEveryKeyOnceAtATimeAtAnyTempo)
{
    const auto text = repeated(sentence, 5) + "aaaa AbA aBa xx\tXx\b\b!!1!";
    for (const double wpm : {1.0, 40.0, 80.0, 160.0, 400.0, 1000.0}) {
        for (std::uint64_t number = 0; number < 20; ++number)
            EXPECT_TRUE(areWhole(human(text, wpm, number))) << wpm << " WPM, seed " << number;
    }
}

TEST(HumanRhythm, HoldsShiftForTheCharactersThatTakeItAndNoOther)
{
    const auto strokes = keystrokesOf(sentence).strokes;
    std::vector<bool> expected;
    expected.reserve(strokes.size());
    for (const auto& stroke : strokes)
        expected.push_back(stroke.isShifted);
    for (const double wpm : {40.0, 120.0, 1000.0}) {
        EXPECT_EQ(shiftStates(human(sentence, wpm)), expected) << wpm;
        EXPECT_EQ(shiftStates(even(sentence, wpm)), expected) << wpm;
    }
}

TEST(HumanRhythm, LetsKeysOverlapOnceInAWhile)
{
    const auto events = human(repeated("the rain in spain ", 20), 90);
    std::size_t overlaps = 0;
    std::size_t held = 0;
    for (const auto& [time, key] : events) {
        overlaps += key.down && held > 0 ? 1 : 0;
        held += key.down ? 1 : -1UL;
    }

    const auto presses = events.size() / 2;
    const auto share = static_cast<double>(overlaps) / static_cast<double>(presses);
    EXPECT_GT(share, 0.05);
    EXPECT_LT(share, 0.5);
}

/// The mean time from the first to the second of two characters that are typed many times.
double meanGap(std::string_view text, std::size_t from)
{
    constexpr int times = 200;
    const auto all = presses(human(repeated(text, times)));
    microseconds sum{0};
    for (std::size_t i = from; i + 1 < all.size(); i += text.size())
        sum += all[i + 1] - all[i];
    return static_cast<double>(sum.count()) / times;
}

TEST(HumanRhythm, IsFasterWhereTheHandsTakeTurns)
{
    // Alternating hands, then the same finger twice.
    EXPECT_LT(meanGap("fjrf", 0), 0.8 * meanGap("fjrf", 2));
}

TEST(HumanRhythm, PausesBetweenWordsAndLongerAfterSentences)
{
    const auto inWord = meanGap("sl. sl sl", 0);
    const auto word = meanGap("sl. sl sl", 6);
    const auto sentenceEnd = meanGap("sl. sl sl", 3);
    EXPECT_LT(inWord, word);
    EXPECT_LT(word * 1.5, sentenceEnd);
}

} // namespace
} // namespace clavo
