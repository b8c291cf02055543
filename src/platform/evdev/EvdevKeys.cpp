// SPDX-License-Identifier: MIT
#include "platform/evdev/EvdevKeys.h"

#include <linux/input-event-codes.h>

#include <array>

namespace clavo::evdev
{
namespace
{

struct Key {
    std::uint16_t evdevCode;
    std::uint8_t virtualCode;
};

constexpr Key keys[] = {
    // clang-format off
    // The main block, row by row.
    {KEY_ESC, 53}, {KEY_F1, 122}, {KEY_F2, 120}, {KEY_F3, 99}, {KEY_F4, 118}, {KEY_F5, 96},
    {KEY_F6, 97}, {KEY_F7, 98}, {KEY_F8, 100}, {KEY_F9, 101}, {KEY_F10, 109}, {KEY_F11, 103},
    {KEY_F12, 111},
    {KEY_GRAVE, 50}, {KEY_1, 18}, {KEY_2, 19}, {KEY_3, 20}, {KEY_4, 21}, {KEY_5, 23}, {KEY_6, 22},
    {KEY_7, 26}, {KEY_8, 28}, {KEY_9, 25}, {KEY_0, 29}, {KEY_MINUS, 27}, {KEY_EQUAL, 24},
    {KEY_BACKSPACE, 51},
    {KEY_TAB, 48}, {KEY_Q, 12}, {KEY_W, 13}, {KEY_E, 14}, {KEY_R, 15}, {KEY_T, 17}, {KEY_Y, 16},
    {KEY_U, 32}, {KEY_I, 34}, {KEY_O, 31}, {KEY_P, 35}, {KEY_LEFTBRACE, 33}, {KEY_RIGHTBRACE, 30},
    {KEY_BACKSLASH, 42},
    {KEY_CAPSLOCK, 57}, {KEY_A, 0}, {KEY_S, 1}, {KEY_D, 2}, {KEY_F, 3}, {KEY_G, 5}, {KEY_H, 4},
    {KEY_J, 38}, {KEY_K, 40}, {KEY_L, 37}, {KEY_SEMICOLON, 41}, {KEY_APOSTROPHE, 39},
    {KEY_ENTER, 36},
    {KEY_LEFTSHIFT, 56}, {KEY_102ND, 10}, {KEY_Z, 6}, {KEY_X, 7}, {KEY_C, 8}, {KEY_V, 9},
    {KEY_B, 11}, {KEY_N, 45}, {KEY_M, 46}, {KEY_COMMA, 43}, {KEY_DOT, 47}, {KEY_SLASH, 44},
    {KEY_RIGHTSHIFT, 60},
    {KEY_FN, 63}, {KEY_LEFTCTRL, 59}, {KEY_LEFTALT, 58}, {KEY_LEFTMETA, 55}, {KEY_SPACE, 49},
    {KEY_RIGHTMETA, 54}, {KEY_RIGHTALT, 61}, {KEY_COMPOSE, 110}, {KEY_RIGHTCTRL, 62},
    // Navigation. Insert sits where Help does.
    {KEY_INSERT, 114}, {KEY_HELP, 114}, {KEY_DELETE, 117}, {KEY_HOME, 115}, {KEY_END, 119},
    {KEY_PAGEUP, 116}, {KEY_PAGEDOWN, 121}, {KEY_UP, 126}, {KEY_LEFT, 123}, {KEY_RIGHT, 124},
    {KEY_DOWN, 125},
    // The keypad.
    {KEY_NUMLOCK, 71}, {KEY_KPEQUAL, 81}, {KEY_KPSLASH, 75}, {KEY_KPASTERISK, 67},
    {KEY_KPMINUS, 78}, {KEY_KPPLUS, 69}, {KEY_KPENTER, 76}, {KEY_KPDOT, 65}, {KEY_KP0, 82},
    {KEY_KP1, 83}, {KEY_KP2, 84}, {KEY_KP3, 85}, {KEY_KP4, 86}, {KEY_KP5, 87}, {KEY_KP6, 88},
    {KEY_KP7, 89}, {KEY_KP8, 91}, {KEY_KP9, 92},
    // Beyond: more function keys, sound, and the Japanese keys (the two language keys are its Kana
    // and Eisu).
    {KEY_F13, 105}, {KEY_F14, 107}, {KEY_F15, 113}, {KEY_F16, 106}, {KEY_F17, 64}, {KEY_F18, 79},
    {KEY_F19, 80}, {KEY_F20, 90}, {KEY_MUTE, 74}, {KEY_VOLUMEDOWN, 73}, {KEY_VOLUMEUP, 72},
    {KEY_YEN, 93}, {KEY_RO, 94}, {KEY_KPJPCOMMA, 95}, {KEY_HANJA, 102}, {KEY_HANGEUL, 104},
    // clang-format on
};

// The virtual codes of the modifiers are these and all between them.
constexpr std::int64_t firstModifier = 54;
constexpr std::int64_t lastModifier = 63;

constexpr auto virtualCodes = [] {
    std::array<std::int64_t, KEY_CNT> codes{};
    for (std::size_t evdevCode = 0; evdevCode < codes.size(); ++evdevCode)
        codes[evdevCode] = privateCodes + static_cast<std::int64_t>(evdevCode);
    for (const auto& key : keys)
        codes[key.evdevCode] = key.virtualCode;
    return codes;
}();

RawEvent event(std::uint32_t type, std::uint32_t evdevCode)
{
    return {.type = type, .keyCode = virtualKeyCode(evdevCode)};
}

} // namespace

std::int64_t virtualKeyCode(std::uint32_t evdevCode)
{
    return evdevCode < virtualCodes.size() ? virtualCodes[evdevCode] : privateCodes + evdevCode;
}

bool isModifier(std::uint32_t evdevCode)
{
    const auto code = virtualKeyCode(evdevCode);
    return code >= firstModifier && code <= lastModifier;
}

std::optional<RawEvent> HeldKeys::change(std::uint32_t evdevCode, bool isDown)
{
    if (evdevCode >= m_down.size())
        return std::nullopt;
    const bool wasDown = m_down[evdevCode];
    m_down.set(evdevCode, isDown);
    if (isModifier(evdevCode) && wasDown == isDown)
        return std::nullopt;
    if (isModifier(evdevCode))
        return event(RawEventType::flagsChanged, evdevCode);
    auto change = event(isDown ? RawEventType::keyDown : RawEventType::keyUp, evdevCode);
    change.isAutoRepeat = isDown && wasDown;
    return change;
}

std::vector<RawEvent> HeldKeys::releaseAll()
{
    std::vector<RawEvent> released;
    for (std::uint32_t evdevCode = 0; evdevCode < m_down.size(); ++evdevCode) {
        if (m_down[evdevCode] && isModifier(evdevCode))
            released.push_back(event(RawEventType::flagsChanged, evdevCode));
    }
    m_down.reset();
    return released;
}

} // namespace clavo::evdev
