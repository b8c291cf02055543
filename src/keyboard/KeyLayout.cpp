// SPDX-License-Identifier: MIT
#include "keyboard/KeyLayout.h"

#include <cstddef>
#include <vector>

namespace clavo::KeyLayout
{
namespace
{

struct Key {
    std::int64_t code;
    std::int64_t scancode;
};

/// Keys from left to right, spread evenly over the whole width of the keyboard.
struct Row {
    KeySlot slot;
    bool typesCharacters;
    std::vector<Key> keys;
};

/// A key whose position is given, not derived from a row.
struct PlacedKey {
    std::int64_t code;
    KeyInfo info;
};

std::vector<Row> rows()
{
    return {
        // clang-format off
        // Escape, F1 … F12
        {KeySlot::row0, false, {
            {53, 1}, {122, 59}, {120, 60}, {99, 61}, {118, 62}, {96, 63}, {97, 64}, {98, 65},
            {100, 66}, {101, 67}, {109, 68}, {103, 87}, {111, 88}}},
        // Grave, 1 … 0, Minus, Equal
        {KeySlot::row1, true, {
            {50, 41}, {18, 2}, {19, 3}, {20, 4}, {21, 5}, {23, 6}, {22, 7}, {26, 8}, {28, 9},
            {25, 10}, {29, 11}, {27, 12}, {24, 13}}},
        // Tab, Q … P, the brackets, Backslash
        {KeySlot::row2, true, {
            {48, 15}, {12, 16}, {13, 17}, {14, 18}, {15, 19}, {17, 20}, {16, 21}, {32, 22},
            {34, 23}, {31, 24}, {35, 25}, {33, 26}, {30, 27}, {42, 43}}},
        // Caps Lock, A … L, Semicolon, Quote
        {KeySlot::row3, true, {
            {57, 58}, {0, 30}, {1, 31}, {2, 32}, {3, 33}, {5, 34}, {4, 35}, {38, 36}, {40, 37},
            {37, 38}, {41, 39}, {39, 40}}},
        // Shift, Section (left of Z on ISO keyboards), Z … Slash, Right Shift
        {KeySlot::row4, true, {
            {56, 42}, {10, 41}, {6, 44}, {7, 45}, {8, 46}, {9, 47}, {11, 48}, {45, 49},
            {46, 50}, {43, 51}, {47, 52}, {44, 53}, {60, 54}}},
        // Function, Control, Option, Command
        {KeySlot::row4, false, {
            {63, 29}, {59, 29}, {58, 56}, {55, 3675}}},
        // clang-format on
    };
}

constexpr PlacedKey placedKeys[] = {
    {49, {KeySlot::space, 57, -0.05F, true}},       // Space
    {36, {KeySlot::enter, 28, 0.92F, false}},       // Return
    {76, {KeySlot::enter, 3612, 1.0F, false}},      // Keypad Enter
    {51, {KeySlot::backspace, 14, 1.0F, false}},    // Delete
    {117, {KeySlot::backspace, 3667, 1.0F, false}}, // Forward Delete
    {54, {KeySlot::row4, 3676, 0.85F, false}},      // Right Command
    {61, {KeySlot::row4, 3640, 0.85F, false}},      // Right Option
    {62, {KeySlot::row4, 3613, 0.85F, false}},      // Right Control
    {115, {KeySlot::row4, 3655, 0.85F, false}},     // Home
    {119, {KeySlot::row4, 3663, 0.85F, false}},     // End
    {116, {KeySlot::row4, 3657, 0.85F, false}},     // Page Up
    {121, {KeySlot::row4, 3665, 0.85F, false}},     // Page Down
    {126, {KeySlot::row4, 57416, 0.85F, false}},    // Up Arrow
    {123, {KeySlot::row4, 57419, 0.85F, false}},    // Left Arrow
    {124, {KeySlot::row4, 57421, 0.85F, false}},    // Right Arrow
    {125, {KeySlot::row4, 57424, 0.85F, false}},    // Down Arrow
};

/// The whole keyboard, by key code and by scancode.
struct Keyboard {
    std::unordered_map<std::int64_t, KeyInfo> byCode;
    std::unordered_map<std::int64_t, KeyInfo> byScancode; // The first of two keys that share one.

    Keyboard();
    void insert(std::int64_t code, const KeyInfo& key);
};

void Keyboard::insert(std::int64_t code, const KeyInfo& key)
{
    byCode.insert_or_assign(code, key);
    byScancode.try_emplace(key.scancode, key);
}

Keyboard::Keyboard()
{
    for (const Row& row : rows()) {
        const std::size_t last = row.keys.size() - 1;
        for (std::size_t j = 0; j <= last; ++j) {
            // The keys at the edges of a row are modifiers or, like Grave, count as such.
            const bool isEdge = j == 0 || (row.slot == KeySlot::row4 && j == last);
            const float place = static_cast<float>(j) / static_cast<float>(last);
            insert(row.keys[j].code,
                   {row.slot, row.keys[j].scancode, 2 * place - 1, row.typesCharacters && !isEdge});
        }
    }
    for (const PlacedKey& key : placedKeys)
        insert(key.code, key.info);
}

const Keyboard& keyboard()
{
    static const Keyboard instance;
    return instance;
}

} // namespace

const std::unordered_map<std::int64_t, KeyInfo>& table()
{
    return keyboard().byCode;
}

KeyInfo info(std::int64_t scancode)
{
    const auto& keys = keyboard().byScancode;
    const auto found = keys.find(scancode);
    return found == keys.end() ? KeyInfo{.slot = KeySlot::row3, .scancode = scancode}
                               : found->second;
}

} // namespace clavo::KeyLayout
