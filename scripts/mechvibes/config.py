# SPDX-License-Identifier: MIT
"""Reads a pack's config, of all formats there are, into one form."""

from __future__ import annotations

import json
import math
import re
from dataclasses import dataclass, field
from pathlib import Path
from typing import Any, Mapping

from mechvibes import keys
from mechvibes.report import Refused, Warn
from mechvibes.source import PackFiles, PackSource

LARGEST_CONFIG = 1 << 20  # Bytes; a hundred keys take 10 kB.
MOST_KEYS = 1000  # A press and a release for each key of a large keyboard are 220.
NEWEST_VERSION = 2

Json = Mapping[str, Any]


@dataclass(frozen=True)
class Sound:
    """One sound of a pack: a file, or the part of it between two times in milliseconds."""

    file: str
    start: float = 0
    end: float = math.inf

    @property
    def is_cut(self) -> bool:
        return self.start > 0 or self.end < math.inf


@dataclass
class PackConfig:
    """The parts of a pack. The keys of the maps are Clavo's scancodes."""

    kind: str
    name: str
    author: str | None
    press: dict[int, Sound] = field(default_factory=dict)
    release: dict[int, Sound] = field(default_factory=dict)


@dataclass(frozen=True)
class Options:
    """How to read what a config leaves open."""

    pairs: bool = False  # Two adjoining times of a key are its press and its release.


def read_config(source: PackSource, files: PackFiles, options: Options, warn: Warn) -> PackConfig:
    """Reads the config of a pack, which is named after its folder if it has no name. Refused when
    it is no config. Takes time and memory in proportion to the length of the file."""
    path = source.config
    document = _parsed(_text_of(path, warn), warn)
    if not isinstance(document, dict):
        raise Refused(f"{path.name} holds no JSON object")
    version = _version_of(document)
    if _is_later_format(document):
        config = _later_format(document, options, warn)
    else:
        config = _Numbered(document, version, files, warn).config()
    if not config.press and not config.release:
        raise Refused(f"{path.name} names no sound")
    config.name = config.name or _text(source.name) or "Unnamed"
    return config


def _text_of(path: Path, warn: Warn) -> str:
    with path.open("rb") as file:
        content = file.read(LARGEST_CONFIG + 1)
    if len(content) > LARGEST_CONFIG:
        raise Refused(f"{path.name} is larger than {LARGEST_CONFIG >> 20} MiB")
    if content.startswith(b"\xef\xbb\xbf"):
        warn(f"{path.name} starts with a byte order mark")
    try:
        return content.decode("utf-8-sig")
    except UnicodeDecodeError:
        warn(f"{path.name} is not UTF-8; it is read as Latin-1")
        return content.decode("latin-1")


# A string, which stays as it is, or a comment. A string or a comment without an end reaches to the
# end of the text: a search that fails there and starts again at the next character would take
# quadratic time.
_STRING = r'("[^"\\]*(?:\\.[^"\\]*)*"?)'
_STRING_OR_COMMENT = re.compile(_STRING + r"|//[^\n]*|/\*.*?(?:\*/|\Z)", re.DOTALL)
_STRING_OR_TRAILING_COMMA = re.compile(_STRING + r"|,(?=\s*[}\]])", re.DOTALL)


def _parsed(text: str, warn: Warn) -> Any:
    try:
        return json.loads(text)
    except (ValueError, RecursionError):
        pass
    mended = text
    for pattern in (_STRING_OR_COMMENT, _STRING_OR_TRAILING_COMMA):
        mended = pattern.sub(lambda match: match.group(1) or "", mended)
    try:
        document = json.loads(mended, strict=False)
    except (ValueError, RecursionError) as error:
        raise Refused(f"the config is no JSON ({error})") from error
    warn("the config is no strict JSON; comments, trailing commas and line ends in texts are mended")
    return document


def _shown(value: Any) -> str:
    """A value of the config for a message, as JSON and not too long."""
    try:
        return json.dumps(value)[:60]
    except RecursionError:
        return "a list of lists"


def _whole(value: Any) -> int | None:
    """The number before the first point of a version, which may be a number or a text."""
    if isinstance(value, bool) or not isinstance(value, (int, float, str)):
        return None
    match = re.match(r"\s*v?(\d{1,9})(?:\.|\s*$)", str(value))
    return int(match.group(1)) if match else None


def _version_of(document: Json) -> int:
    versions = [1]
    for member in ("version", "config_version"):
        if document.get(member) is not None:
            version = _whole(document[member])
            if version is None or version > NEWEST_VERSION:
                raise Refused(f'"{member}" is {_shown(document[member])}; {NEWEST_VERSION} is the '
                              "newest that can be read")
            versions.append(version)
    return max(versions)


def _is_later_format(document: Json) -> bool:
    return any(member in document for member in ("definitions", "defs", "config_version"))


def _text(value: Any) -> str | None:
    """One line of text for people, or None."""
    line = " ".join(str(value).split())[:100] if isinstance(value, (str, int, float)) else ""
    return "".join(letter for letter in line if letter.isprintable()) or None


def _empty_config(document: Json, kind: str) -> PackConfig:
    return PackConfig(kind, _text(document.get("name")) or "", _text(document.get("author")))


def _keys(document: Json, *members: str) -> Json:
    """The first of these members that is an object."""
    for member in members:
        value = document.get(member)
        if isinstance(value, dict):
            if len(value) > MOST_KEYS:
                raise Refused(f'"{member}" has {len(value)} keys; {MOST_KEYS} are the most')
            return value
    raise Refused(f'the config has no object "{members[0]}"')


def _times(value: Any) -> tuple[float, float] | None:
    """A pair of finite numbers."""
    numbers = isinstance(value, list) and len(value) == 2 and all(
        isinstance(number, (int, float)) and not isinstance(number, bool) for number in value)
    if not numbers:
        return None
    try:
        first, second = float(value[0]), float(value[1])
    except OverflowError:
        return None
    return (first, second) if math.isfinite(first) and math.isfinite(second) else None


class _Numbered:
    """Versions 1 and 2: `defines` by key number. A list of two numbers is a part of the pack's one
    file, a text names a file, whatever "key_define_type" says."""

    def __init__(self, document: Json, version: int, files: PackFiles, warn: Warn) -> None:
        self._document = document
        self._version = version
        self._files = files
        self._warn = warn
        self._defines = _keys(document, "defines")
        self._by_zeros = document.get("compatibility") is True

    def config(self) -> PackConfig:
        kind = "single" if self._is_single() else "multi"
        config = _empty_config(self._document, f"version {self._version}, {kind}")
        named: dict[bool, dict[int, Any]] = {False: {}, True: {}}
        for name, value in sorted(self._defines.items(), key=self._precedence):
            key = self._key(name)
            if key is None:
                self._warn(f'"{name[:60]}" is no key number')
                continue
            code, release = key
            named[release][code] = value
        sounding = {code for code, value in named[False].items() if value is not None}
        evdev = keys.holds_evdev_numbers(sounding)
        if evdev:
            self._warn("its key numbers above 95 are read as those of evdev")
        for release, sounds in ((False, config.press), (True, config.release)):
            values = keys.renumbered(named[release], evdev)
            sounds.update(self._sounds(values))
            sounds.update(self._defaults(values, release))
        return config

    def _is_single(self) -> bool:
        declared = self._document.get("key_define_type")
        if declared in ("single", "multi"):
            return bool(declared == "single")
        return any(isinstance(value, list) for value in self._defines.values())

    def _precedence(self, member: tuple[str, Any]) -> int:
        """The order in which entries are read; the last one for a key counts. In the dialect that
        is the one written with zeros, elsewhere the one without."""
        has_zeros = member[0].startswith("0")
        return int(has_zeros if self._by_zeros else not has_zeros)

    def _key(self, name: str) -> tuple[int, bool] | None:
        """The number of a member and whether it is a release."""
        match = re.fullmatch(r"(0*)([1-9]\d{0,8})(-up)?", name.strip(), re.ASCII)
        if match is None:
            return None
        zeros, digits, up = match.groups()
        return int(digits), up is not None or (self._by_zeros and len(zeros) == 2)

    def _sounds(self, values: Mapping[int, Any]) -> dict[int, Sound]:
        sounds = {}
        for code, value in values.items():
            sound = None if value is None else self._sound(code, value)
            if sound is not None:
                sounds[code] = sound
        return sounds

    def _sound(self, code: int, value: Any) -> Sound | None:
        if isinstance(value, str):
            return Sound(self._resolved(value))
        times = _times(value)
        file = self._document.get("sound")
        if times is None or not isinstance(file, str):
            self._warn(f"key {code}: {_shown(value)} is neither a file nor a part of one")
            return None
        start, length = times
        if length <= 0:
            self._warn(f"key {code}: a part of {length:g} ms is none")
            return None
        return Sound(file, max(start, 0), start + length)

    def _defaults(self, values: Mapping[int, Any], release: bool) -> dict[int, Sound]:
        """The pack's sound for all keys without an entry, which version 2 may have."""
        file = self._document.get("soundup" if release else "sound")
        if self._version < 2 or self._is_single() or not isinstance(file, str):
            return {}
        sound = Sound(self._resolved(file))
        return {code: sound for code in keys.LAYOUT if code not in values}

    def _resolved(self, name: str) -> str:
        """The name with a range `{a-b}` replaced by the first of its numbers that is a file."""
        match = re.search(r"\{(\d{1,6})-(\d{1,6})\}", name, re.ASCII)
        if match is None or self._version < 2:
            return name
        first, last = int(match.group(1)), int(match.group(2))
        names = (name[: match.start()] + str(number) + name[match.end() :]
                 for number in range(first, min(last, first + 999) + 1))
        return next((each for each in names if self._is_there(each)), name)

    def _is_there(self, name: str) -> bool:
        try:
            return self._files.find(name) is not None
        except ValueError:
            return False


def _later_format(document: Json, options: Options, warn: Warn) -> PackConfig:
    """Keys by the names of `KeyboardEvent.code`, times from start to end."""
    config = _empty_config(document, "version 2, named keys")
    variants_left_out = False
    for name, value in _keys(document, "definitions", "defs", "defines").items():
        code = keys.BY_CODE_NAME.get(name)
        if value is None:
            continue
        if code is None or not isinstance(value, dict):
            warn(f'"{name[:60]}" is no key with a sound')
            continue
        sounds = _timed_sounds(name, value, document.get("audio_file"), warn)
        if not sounds:
            continue
        config.press[code] = sounds[0]
        if options.pairs and len(sounds) > 1:
            config.release[code] = sounds[1]
        variants_left_out |= len(sounds) > (2 if options.pairs else 1)
    if variants_left_out:
        warn("keys have several variants; the first of each is taken")
    return config


def _timed_sounds(name: str, value: Json, pack_file: Any, warn: Warn) -> list[Sound]:
    file = value.get("audio_file") or pack_file
    if not isinstance(file, str):
        warn(f"{name}: no audio file is named")
        return []
    timing = value.get("timing")
    if timing is None:
        return [Sound(file)]
    # A single pair may stand without a list around it.
    entries = [timing] if _times(timing) else timing if isinstance(timing, list) else [timing]
    sounds = []
    for entry in entries:
        times = _times(entry)
        if times is None or times[1] <= max(times[0], 0):
            warn(f"{name}: {_shown(entry)} is no part of a file")
            continue
        sounds.append(Sound(file, max(times[0], 0), times[1]))
    return sounds
