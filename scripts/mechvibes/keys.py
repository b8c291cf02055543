# SPDX-License-Identifier: MIT
"""The numbers of keys: PC set-1 scancodes, which packs of both programs use."""

from __future__ import annotations

from typing import Mapping, TypeVar

UP, LEFT, RIGHT, DOWN = 57416, 57419, 57421, 57424
ARROWS = (UP, LEFT, RIGHT, DOWN)

_Sound = TypeVar("_Sound")


def _in_order(first: int, names: str) -> dict[str, int]:
    return {name: first + place for place, name in enumerate(names.split())}


def _letters(first: int, letters: str) -> dict[str, int]:
    return {f"Key{letter}": first + place for place, letter in enumerate(letters)}


# The names of `KeyboardEvent.code`.
BY_CODE_NAME: dict[str, int] = {
    **_in_order(1, "Escape Digit1 Digit2 Digit3 Digit4 Digit5 Digit6 Digit7 Digit8 Digit9 Digit0"),
    **_in_order(12, "Minus Equal Backspace Tab"),
    **_letters(16, "QWERTYUIOP"),
    **_in_order(26, "BracketLeft BracketRight Enter ControlLeft"),
    **_letters(30, "ASDFGHJKL"),
    **_in_order(39, "Semicolon Quote Backquote ShiftLeft Backslash"),
    **_letters(44, "ZXCVBNM"),
    **_in_order(51, "Comma Period Slash ShiftRight NumpadMultiply AltLeft Space CapsLock"),
    **_in_order(59, "F1 F2 F3 F4 F5 F6 F7 F8 F9 F10 NumLock ScrollLock"),
    **_in_order(71, "Numpad7 Numpad8 Numpad9 NumpadSubtract Numpad4 Numpad5 Numpad6 NumpadAdd"),
    **_in_order(79, "Numpad1 Numpad2 Numpad3 Numpad0 NumpadDecimal"),
    **_in_order(87, "F11 F12"),
    **_in_order(91, "F13 F14 F15"),
    **_in_order(99, "F16 F17 F18 F19 F20 F21 F22 F23 F24"),
    "NumpadEqual": 3597,
    **_in_order(3612, "NumpadEnter ControlRight"),
    "NumpadDivide": 3637,
    **_in_order(3639, "PrintScreen AltRight"),
    **_in_order(3653, "Pause IntlBackslash Home"),
    "PageUp": 3657,
    "End": 3663,
    **_in_order(3665, "PageDown Insert Delete"),
    **_in_order(3675, "MetaLeft MetaRight ContextMenu"),
    "ArrowUp": UP,
    "ArrowLeft": LEFT,
    "ArrowRight": RIGHT,
    "ArrowDown": DOWN,
}

# A second set of numbers for the navigation keys: 0xEE00 + code.
_SECOND_SET = {
    60999: 3655,
    61000: UP,
    61001: 3657,
    61003: LEFT,
    61005: RIGHT,
    61007: 3663,
    61008: DOWN,
    61009: 3665,
    61011: 3667,
}

_EVDEV = {
    96: 3612,
    97: 3613,
    98: 3637,
    99: 3639,
    100: 3640,
    102: 3655,
    103: UP,
    104: 3657,
    105: LEFT,
    106: RIGHT,
    107: 3663,
    108: DOWN,
    109: 3665,
    110: 3666,
    111: 3667,
    117: 3597,
    119: 3653,
    125: 3675,
    126: 3676,
    127: 3677,
}
_EVDEV_ARROWS = (103, 105, 106, 108)

# Every key of Clavo's layout.
LAYOUT: tuple[int, ...] = (
    *range(1, 55),
    *range(56, 69),
    87,
    88,
    *(3612, 3613, 3640, 3655, 3657, 3663, 3665, 3667, 3675, 3676),
    *ARROWS,
)


def holds_evdev_numbers(codes: set[int]) -> bool:
    """Whether the numbers of these keys above 95 are those of evdev. In a correct pack those numbers
    are F16 to F24, so the arrows decide: a pack has them under one number or the other."""
    arrows = {code for code, meant in _SECOND_SET.items() if meant in ARROWS}.union(ARROWS)
    return codes.isdisjoint(arrows) and codes.issuperset(_EVDEV_ARROWS)


def renumbered(sounds: Mapping[int, _Sound], evdev: bool) -> dict[int, _Sound]:
    """The sounds by Clavo's numbers. An entry under Clavo's number takes precedence over one under
    another number of the same key; other keys keep their number."""
    meant = {**_SECOND_SET, **(_EVDEV if evdev else {})}
    result = {code: sound for code, sound in sounds.items() if code not in meant}
    for code, sound in sounds.items():
        if code in meant:
            result.setdefault(meant[code], sound)
    return dict(sorted(result.items()))
