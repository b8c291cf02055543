# SPDX-License-Identifier: MIT
"""What holds of every config, whatever is in it."""

from __future__ import annotations

import json
import tempfile
import unittest
from pathlib import Path
from typing import Any

from mechvibes.config import Options, PackConfig, read_config
from mechvibes.report import Refused, printable
from mechvibes.source import PackFiles, PackSource

try:
    from hypothesis import given, settings, strategies
except ImportError as error:  # scripts/bootstrap check installs it.
    raise unittest.SkipTest(str(error)) from error

# The same configs in every run, which leave no files behind.
settings.register_profile("clavo", database=None, derandomize=True, deadline=None,
                          max_examples=200)
settings.load_profile("clavo")

texts = strategies.text(max_size=20)
numbers = strategies.integers(-5, 500) | strategies.integers() | strategies.floats()
values = strategies.recursive(
    strategies.none() | strategies.booleans() | numbers | texts,
    lambda inner: strategies.lists(inner, max_size=3) | strategies.dictionaries(texts, inner,
                                                                                max_size=3),
    max_leaves=5)
file_names = strategies.sampled_from(["a.wav", "A.WAV", "a{1-9}.wav", "../a.wav"]) | texts
times = strategies.lists(numbers, min_size=2, max_size=2)
# Maps as the formats have them, and with names and values that they do not have.
key_numbers = (strategies.integers(0, 110).map(str)
               | strategies.from_regex(r"0{0,3}[0-9]{1,5}(-up)?", fullmatch=True) | texts)
key_codes = strategies.sampled_from(["KeyA", "Space", "Enter"]) | texts
timed = strategies.fixed_dictionaries({"timing": strategies.lists(times, max_size=3) | values},
                                      optional={"audio_file": file_names | values})
maps = (strategies.dictionaries(key_numbers, file_names | times | values, max_size=4)
        | strategies.dictionaries(key_codes, timed | values, max_size=4) | values)
configs = strategies.fixed_dictionaries({}, optional={
    **dict.fromkeys(("defines", "definitions", "defs"), maps),
    **dict.fromkeys(("sound", "soundup", "audio_file"), file_names | values),
    **dict.fromkeys(("version", "config_version"), strategies.sampled_from([1, 2, "2"]) | values),
    **dict.fromkeys(("name", "author"), texts | values),
    "key_define_type": strategies.sampled_from(["single", "multi"]) | values,
    "compatibility": strategies.booleans() | values,
})
# Characters that mean something to a reader of JSON, in an order that means nothing.
scraps = strategies.lists(strategies.sampled_from(
    ['"', "\\", "/", "*", "//", "/*", "*/", ",", "{", "}", "[", "]", ":", "\n", " ", '"defines"',
     '"30"', '"a.wav"', "1", "é"]), max_size=40).map("".join)


class AnyConfig(unittest.TestCase):
    def setUp(self) -> None:
        temporary = tempfile.TemporaryDirectory(prefix="clavo-test-")
        self.addCleanup(temporary.cleanup)
        self.folder = Path(temporary.name)
        (self.folder / "a.wav").touch()

    def read(self, content: bytes, pairs: bool = False) -> PackConfig | None:
        """The config, or None when it is refused. Nothing else may happen."""
        path = self.folder / "config.json"
        path.write_bytes(content)
        warnings: list[str] = []
        try:
            config = read_config(PackSource(self.folder, path, "pack"), PackFiles(self.folder),
                                 Options(pairs), warnings.append)
        except Refused as error:
            self.assertLess(len(str(error)), 400)
            return None
        self.assertLess(max(map(len, warnings), default=0), 400)
        return config

    def check(self, config: PackConfig) -> None:
        self.assertTrue(config.press or config.release)
        self.assertTrue(config.name)
        for text in (config.name, config.author or ""):
            self.assertEqual(printable(text), text)
            self.assertLessEqual(len(text), 100)
        for key, sound in (*config.press.items(), *config.release.items()):
            self.assertGreater(key, 0)
            self.assertIsInstance(sound.file, str)
            self.assertLessEqual(0, sound.start)
            self.assertLess(sound.start, sound.end)

    @given(configs, strategies.booleans())
    def test_a_config_is_read_or_refused(self, config: dict[str, Any], pairs: bool) -> None:
        read = self.read(json.dumps(config).encode(), pairs)
        if read is not None:
            self.check(read)

    @given(strategies.binary(max_size=200) | scraps.map(str.encode))
    def test_bytes_are_read_or_refused(self, content: bytes) -> None:
        read = self.read(content)
        if read is not None:
            self.check(read)

    @given(configs, strategies.sampled_from(["// a comment\n", "/* a\ncomment */", " ", "\n"]))
    def test_comments_and_trailing_commas_change_nothing(
        self, config: dict[str, Any], between: str
    ) -> None:
        tidy = json.dumps(config)
        untidy = between + json.dumps(config, indent=1).replace("\n", f"{between}\n") + between
        # An object that is not empty ends with a line end and its brace.
        if config:
            untidy = untidy[: untidy.rindex("}")] + ",}" + between
        self.assertEqual(self.read(untidy.encode()), self.read(tidy.encode()))


if __name__ == "__main__":
    unittest.main()
