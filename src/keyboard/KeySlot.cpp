// SPDX-License-Identifier: MIT
#include "keyboard/KeySlot.h"

#include <cstddef>

namespace clavo
{
namespace
{

constexpr std::array<std::int64_t, 13> row0{1, 59, 60, 61, 62, 63, 64, 65, 66, 67, 68, 87, 88};
constexpr std::array<std::int64_t, 13> row1{41, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12, 13};
constexpr std::array<std::int64_t, 14> row2{15, 16, 17, 18, 19, 20, 21, 22, 23, 24, 25, 26, 27, 43};
constexpr std::array<std::int64_t, 12> row3{58, 30, 31, 32, 33, 34, 35, 36, 37, 38, 39, 40};
constexpr std::array<std::int64_t, 15> row4{42, 44, 45, 46, 47, 48, 49,  50,
                                            51, 52, 53, 54, 29, 56, 3675};
constexpr std::array<std::int64_t, 1> space{57};
constexpr std::array<std::int64_t, 2> enter{28, 3612};
constexpr std::array<std::int64_t, 2> backspace{14, 3667};

} // namespace

std::uint64_t seedOffset(KeySlot slot)
{
    return static_cast<std::uint64_t>(slot) * 1000003;
}

std::span<const std::int64_t> fallbackScancodes(KeySlot slot)
{
    static constexpr std::array<std::span<const std::int64_t>, allKeySlots.size()> scancodes{
        row0, row1, row2, row3, row4, space, enter, backspace};
    return scancodes[static_cast<std::size_t>(slot)];
}

} // namespace clavo
