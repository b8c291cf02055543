// SPDX-License-Identifier: MIT
#include "keyboard/KeySlot.h"

#include <gmock/gmock.h>

#include <algorithm>
#include <array>
#include <set>

namespace clavo
{
namespace
{

using testing::ElementsAre;

TEST(KeySlot, SeedOffsetsAreMultiplesOfOnePrimeInTheOrderOfTheSlots)
{
    std::array<std::uint64_t, allKeySlots.size()> offsets{};
    std::ranges::transform(allKeySlots, offsets.begin(), seedOffset);

    EXPECT_THAT(offsets,
                ElementsAre(0, 1000003, 2000006, 3000009, 4000012, 5000015, 6000018, 7000021));
}

TEST(KeySlot, FallbacksRunFromLeftToRight)
{
    EXPECT_THAT(fallbackScancodes(KeySlot::row0),
                ElementsAre(1, 59, 60, 61, 62, 63, 64, 65, 66, 67, 68, 87, 88));
    EXPECT_THAT(fallbackScancodes(KeySlot::row1),
                ElementsAre(41, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12, 13));
    EXPECT_THAT(fallbackScancodes(KeySlot::row2),
                ElementsAre(15, 16, 17, 18, 19, 20, 21, 22, 23, 24, 25, 26, 27, 43));
    EXPECT_THAT(fallbackScancodes(KeySlot::row3),
                ElementsAre(58, 30, 31, 32, 33, 34, 35, 36, 37, 38, 39, 40));
    EXPECT_THAT(fallbackScancodes(KeySlot::row4),
                ElementsAre(42, 44, 45, 46, 47, 48, 49, 50, 51, 52, 53, 54, 29, 56, 3675));
    EXPECT_THAT(fallbackScancodes(KeySlot::space), ElementsAre(57));
    EXPECT_THAT(fallbackScancodes(KeySlot::enter), ElementsAre(28, 3612));
    EXPECT_THAT(fallbackScancodes(KeySlot::backspace), ElementsAre(14, 3667));
}

TEST(KeySlot, NoScancodeFallsBackInTwoSlots)
{
    std::multiset<std::int64_t> all;
    for (const KeySlot slot : allKeySlots) {
        for (const std::int64_t scancode : fallbackScancodes(slot))
            all.insert(scancode);
    }

    EXPECT_EQ(all.size(), std::set(all.begin(), all.end()).size());
}

} // namespace
} // namespace clavo
