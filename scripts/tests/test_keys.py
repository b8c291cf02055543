# SPDX-License-Identifier: MIT
from __future__ import annotations

import unittest

from mechvibes import keys


class Keys(unittest.TestCase):
    def test_the_layout_has_83_keys(self) -> None:
        self.assertEqual(len(set(keys.LAYOUT)), 83)

    def test_every_key_of_the_layout_has_a_name(self) -> None:
        self.assertLessEqual(set(keys.LAYOUT), set(keys.BY_CODE_NAME.values()))

    def test_no_two_names_are_one_key(self) -> None:
        self.assertEqual(len(keys.BY_CODE_NAME), len(set(keys.BY_CODE_NAME.values())))

    def test_names_stand_for_the_numbers_of_a_pc_keyboard(self) -> None:
        numbers = {"Digit1": 2, "KeyA": 30, "Enter": 28, "Space": 57, "F11": 87, "F13": 91,
                   "F24": 107, "ShiftRight": 54, "IntlBackslash": 3654, "Home": 3655,
                   "Insert": 3666, "ContextMenu": 3677, "ArrowDown": 57424, "Numpad0": 82}
        self.assertEqual({name: keys.BY_CODE_NAME[name] for name in numbers}, numbers)

    def test_the_second_set_stands_in_for_what_is_absent_only(self) -> None:
        sounds = {60999: "second home", 61000: "second up", 57416: "up"}
        self.assertEqual(keys.renumbered(sounds, evdev=False), {3655: "second home", 57416: "up"})

    def test_keys_the_layout_does_not_know_keep_their_number(self) -> None:
        self.assertEqual(keys.renumbered({3654: "iso", 99: "F16"}, evdev=False),
                         {3654: "iso", 99: "F16"})

    def test_evdev_numbers_are_recognised_by_their_arrows(self) -> None:
        evdev = {103, 105, 106, 108}
        self.assertTrue(keys.holds_evdev_numbers(evdev | {30, 97}))
        self.assertFalse(keys.holds_evdev_numbers(evdev | {57419}))
        self.assertFalse(keys.holds_evdev_numbers(evdev | {61003}))
        self.assertFalse(keys.holds_evdev_numbers(evdev - {105}))

    def test_evdev_numbers_become_scancodes(self) -> None:
        sounds = {97: "control", 102: "home", 103: "up", 108: "down", 125: "meta", 88: "F12"}
        self.assertEqual(keys.renumbered(sounds, evdev=True),
                         {88: "F12", 3613: "control", 3655: "home", 3675: "meta", 57416: "up",
                          57424: "down"})


if __name__ == "__main__":
    unittest.main()
