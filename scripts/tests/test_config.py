# SPDX-License-Identifier: MIT
from __future__ import annotations

import contextlib
import unittest

from made_up import MadeUpPacks, tone, write_sound
from mechvibes.config import Options, read_config
from mechvibes.report import Refused
from mechvibes.source import PackFiles, PackSource


class Version1(MadeUpPacks):
    def test_single_cuts_parts_of_one_file(self) -> None:
        write_sound(self.pack / "all.wav", tone(100, 0.25) + tone(100, 0.75))
        self.write_single({"30": [0, 100], "31": [100.5, 99.5]})
        self.convert()
        self.assertEqual([self.level(30), self.level(31)], [0.25, 0.75])
        self.assertEqual(self.manifest()["release"], {})

    def test_multi_takes_a_file_for_each_key(self) -> None:
        self.write_tone("a.wav", level=0.25)
        self.write_tone("sub/b.wav", level=0.75)
        self.write_multi({"30": "a.wav", "31": "sub/b.wav"}, sound="nowhere.ogg")
        self.convert()
        self.assertEqual([self.level(30), self.level(31)], [0.25, 0.75])
        self.assertEqual(list(self.manifest()["press"]), ["30", "31"])

    def test_without_a_type_the_values_decide(self) -> None:
        self.write_tone("a.wav")
        self.write_config({"name": "Made Up", "sound": "a.wav", "defines": {"30": [0, 20]}})
        self.convert()
        self.assertEqual(len(self.sound(30)), 882)

    def test_null_is_no_sound(self) -> None:
        self.write_tone("a.wav")
        self.write_multi({"30": "a.wav", "31": None})
        done = self.convert()
        self.assertEqual(list(self.manifest()["press"]), ["30"])
        self.assertEqual(done.stderr, "")

    def test_manifest_is_one_of_clavo(self) -> None:
        self.write_tone("a.wav")
        self.write_multi({"30": "a.wav"}, author="Some One", tags=["x"], includes_numpad=True)
        self.convert()
        self.assertEqual(
            self.manifest(),
            {"id": "made-up", "name": "Made Up", "detail": "Converted from a Mechvibes pack",
             "category": "custom", "credit": "Some One", "press": {"30": "press-30"},
             "release": {}})

    def test_name_that_is_missing_is_the_folders(self) -> None:
        self.write_tone("a.wav")
        self.write_config({"defines": {"30": "a.wav"}})
        self.convert()
        self.assertEqual(self.manifest("pack")["name"], "pack")

    def test_leading_zeros_mean_nothing_without_the_dialect(self) -> None:
        self.write_tone("a.wav", level=0.25)
        self.write_tone("b.wav", level=0.75)
        self.write_multi({"030": "b.wav", "30": "a.wav", "0031": "b.wav"})
        self.convert()
        self.assertEqual([self.level(30), self.level(31)], [0.25, 0.75])
        self.assertEqual(self.manifest()["release"], {})

    def test_dialect_writes_press_and_release_with_zeros(self) -> None:
        self.write_tone("a.wav", level=0.25)
        self.write_tone("b.wav", level=0.75)
        self.write_multi({"030": "a.wav", "0030": "b.wav", "30": "b.wav"}, compatibility=True)
        self.convert()
        self.assertEqual([self.level(30), self.level(30, "release")], [0.25, 0.75])

    def test_evdev_numbers_are_understood(self) -> None:
        self.write_tone("a.wav")
        self.write_multi(dict.fromkeys(("97", "103", "105", "106", "108"), "a.wav"))
        done = self.convert()
        self.assertEqual(list(self.manifest()["press"]),
                         ["3613", "57416", "57419", "57421", "57424"])
        self.assertIn("evdev", done.stderr)


class Version2(MadeUpPacks):
    def test_up_members_are_releases(self) -> None:
        self.write_tone("a.wav", level=0.25)
        self.write_tone("b.wav", level=0.75)
        for version in (2, "2"):
            self.write_multi({"30": "a.wav", "30-up": "b.wav"}, version=version,
                             name=f"Up {type(version).__name__}")
            self.convert()
        self.assertEqual(self.manifest("up-int")["release"], {"30": "release-30"})
        self.assertEqual(self.manifest("up-str")["release"], {"30": "release-30"})

    def test_defaults_are_for_keys_without_an_entry(self) -> None:
        for name, level in (("a.wav", 0.25), ("down.wav", 0.5), ("up.wav", 0.75)):
            self.write_tone(name, level=level)
        self.write_multi({"30": "a.wav", "31": None}, version=2, sound="down.wav",
                         soundup="up.wav")
        self.convert()
        self.assertEqual([self.level(30), self.level(57416)], [0.25, 0.5])
        self.assertEqual(self.level(30, "release"), 0.75)
        self.assertEqual(len(self.manifest()["press"]), 82)
        self.assertNotIn("31", self.manifest()["press"])

    def test_range_in_a_name_is_the_first_file_there_is(self) -> None:
        self.write_tone("a3.wav", level=0.75)
        self.write_tone("a4.wav", level=0.25)
        self.write_multi({"30": "a{1-4}.wav"}, version=2)
        self.convert()
        self.assertEqual(self.level(30), 0.75)


class LaterFormat(MadeUpPacks):
    definitions = {
        "KeyA": {"timing": [[0, 100], [100, 200], [100, 150]]},
        "Enter": {"timing": [[100, 200]]},
        "Space": {"audio_file": "space.wav"},
        "Nonsense": {"timing": [[0, 100]]},
    }

    def write_later(self, **more: object) -> None:
        write_sound(self.pack / "all.wav", tone(100, 0.25) + tone(100, 0.75))
        self.write_tone("space.wav", level=0.5)
        self.write_config({"name": "Made Up", "audio_file": "all.wav", **more})

    def test_times_are_start_and_end(self) -> None:
        for member in ("definitions", "defs"):
            with self.subTest(member):
                self.write_later(**{member: self.definitions, "name": member, "version": 2})
                self.convert()
                self.assertEqual(self.manifest(member)["press"],
                                 {"28": "press-28", "30": "press-30", "57": "press-57"})
                self.assertEqual(self.manifest(member)["release"], {})

    def test_first_variant_is_taken(self) -> None:
        self.write_later(config_version="2", definitions=self.definitions)
        done = self.convert()
        self.assertEqual([self.level(30), self.level(28), self.level(57)], [0.25, 0.75, 0.5])
        self.assertIn("several variants", done.stderr)
        self.assertIn('"Nonsense" is no key', done.stderr)

    def test_adjoining_pairs_are_press_and_release_on_demand(self) -> None:
        self.write_later(definitions=self.definitions)
        self.convert("--pairs")
        self.assertEqual([self.level(30), self.level(30, "release")], [0.25, 0.75])
        self.assertEqual(list(self.manifest()["release"]), ["30"])

    def test_versions_still_to_come_are_refused(self) -> None:
        for member in ("version", "config_version"):
            with self.subTest(member):
                self.write_later(**{member: 3, "definitions": self.definitions})
                done = self.run_script(self.pack, "--to", self.to)
                self.assertEqual(done.returncode, 1)
                self.assertIn(f'"{member}" is 3; 2 is the newest', done.stderr)
        self.assertFalse(any(self.to.glob("*")))


class UntidyConfig(MadeUpPacks):
    def setUp(self) -> None:
        super().setUp()
        self.write_tone("a//b,}.wav")

    def test_byte_order_mark_is_accepted(self) -> None:
        self.write_config(b'\xef\xbb\xbf{"name": "Made Up", "defines": {"30": "a//b,}.wav"}}')
        self.assertIn("byte order mark", self.convert().stderr)

    def test_comments_and_trailing_commas_are_accepted(self) -> None:
        self.write_config("""{ // the name
            "name": "Made Up", /* and
            the keys */ "defines": {"30": "a//b,}.wav", "31": "a//b,}.wav",},
        }""")
        self.assertIn("no strict JSON", self.convert().stderr)
        self.assertEqual(list(self.manifest()["press"]), ["30", "31"])

    def test_text_that_is_not_utf8_is_accepted(self) -> None:
        self.write_config('{"name": "Été", "defines": {"30": "a//b,}.wav"}}'.encode("latin-1"))
        self.assertIn("not UTF-8", self.convert().stderr)
        self.assertEqual(self.manifest("ete")["name"], "Été")

    def test_what_is_no_config_is_refused(self) -> None:
        for text, reason in (("{", "no JSON"), ("[]", "no JSON object"), ("{}", '"defines"'),
                             ('{"defines": []}', '"defines"'), ("[" * 100_000, "no JSON"),
                             ('{"defines": {"x": "a", "30": 5}}', "names no sound")):
            with self.subTest(text[:40]):
                self.write_config(text)
                done = self.run_script(self.pack, "--to", self.to)
                self.assertEqual(done.returncode, 1)
                self.assertIn(reason, done.stderr)
                self.assertNotIn("Traceback", done.stderr)
        self.assertFalse(self.to.exists())

    def test_text_without_an_end_is_refused_in_linear_time(self) -> None:
        for text in ('{"a": 1 "' + '\\"' * 500_000, "/*" * 500_000, '"' + "\\" * 1_000_001):
            with self.subTest(text[:10]):
                self.write_config(text)
                self.assertIn("no JSON", self.refusal())

    def test_config_larger_than_a_mebibyte_is_refused(self) -> None:
        self.write_config(" " * (1 << 20) + "{}")
        self.assertIn("config.json is larger than 1 MiB", self.refusal())

    def test_config_of_too_many_keys_is_refused(self) -> None:
        for member in ("defines", "definitions"):
            with self.subTest(member):
                self.write_config({member: dict.fromkeys(map(str, range(1001)), "a//b,}.wav")})
                self.assertIn(f'"{member}" has 1001 keys; 1000 are the most', self.refusal())
        self.assertFalse(self.to.exists())

    def test_value_of_many_levels_is_left_out(self) -> None:
        # Python reads a few more levels than it writes; the number depends on its version.
        for levels in range(1000, 900, -1):
            value = "[" * levels + "]" * levels
            self.write_config('{"defines": {"30": "a//b,}.wav", "31": %s}}' % value)
            source = PackSource(self.pack, self.pack / "config.json", "pack")
            with contextlib.suppress(Refused):
                config = read_config(source, PackFiles(self.pack), Options(), lambda _: None)
                self.assertEqual(list(config.press), [30])

    def test_names_cannot_command_the_terminal(self) -> None:
        self.write_multi({"30": "a//b,}.wav", "\x1b[2J": "x", "\u202eevil": "x", "31": "\x9b.wav"},
                         name="\x1b]0;owned\x07 Made\u202e Up\u2066")
        done = self.convert()
        for letter in "\x1b\x07\x9b\u202e\u2066":
            self.assertNotIn(letter, done.stdout + done.stderr)
        self.assertIn('"\ufffd[2J" is no key number', done.stderr)
        self.assertIn('"\ufffd.wav" is missing', done.stderr)

    def test_letters_that_the_terminal_lacks_are_replaced(self) -> None:
        self.write_multi({"30": "a//b,}.wav"}, name="键盘")
        done = self.run_script(self.pack, "--list", environment={"PYTHONIOENCODING": "latin-1"})
        self.assertIn("??: version 1", done.stdout)

    def test_names_longer_than_the_system_allows_are_missing_files(self) -> None:
        self.write_multi({"30": "a//b,}.wav", "31": "x" * 5000, "32": "{1-2}" + "y" * 5000},
                         version=2)
        done = self.convert()
        self.assertEqual(list(self.manifest()["press"]), ["30"])
        self.assertEqual(done.stderr.count("is missing"), 2)

    def test_entries_that_mean_nothing_are_left_out(self) -> None:
        self.write_multi({"30": "a//b,}.wav", "": "x", "abc": "x", "-5": "x", "31": 7,
                          "32": [1, "2"], "33": [0, float("nan")], "34": {}, "9" * 30: "x"},
                         sound="a//b,}.wav")
        done = self.convert()
        self.assertEqual(list(self.manifest()["press"]), ["30"])
        self.assertEqual(done.stderr.count("warning"), 8)


if __name__ == "__main__":
    unittest.main()
