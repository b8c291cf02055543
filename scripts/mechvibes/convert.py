# SPDX-License-Identifier: MIT
"""Writes one pack as a pack folder of Clavo."""

from __future__ import annotations

import contextlib
import errno
import itertools
import json
import re
import tempfile
import unicodedata
from dataclasses import dataclass
from pathlib import Path
from typing import Callable, Iterator, Sequence, Tuple

from mechvibes.audio import Decoder, NoAudio, Recording, cut, decode, wave_bytes, write_wave
from mechvibes.config import PackConfig, Sound
from mechvibes.report import Refused, Warn
from mechvibes.source import PackFiles

# Called with how many of all sounds are done.
Progress = Callable[[int, int], None]

Key = Tuple[str, int]  # "press" or "release", and the scancode.


@dataclass(frozen=True)
class Wave:
    """One sound as it stands in its file: 16 bits, one channel."""

    frames: bytes
    rate: int


@dataclass(frozen=True)
class Converter:
    """Makes sounds of what a pack names."""

    decoders: Sequence[Decoder]
    keep_silence: bool
    warn: Warn
    progress: Progress

    def waves(self, config: PackConfig, files: PackFiles) -> Iterator[tuple[Wave, list[Key]]]:
        """Every sound of the pack with the keys that have it. One recording is in memory at a
        time."""
        uses = _uses(config)
        done = 0
        for file in dict.fromkeys(sound.file for sound in uses):
            sounds = [sound for sound in uses if sound.file == file]
            recording = self._recording(file, files)
            for sound in sounds:
                wave = self._wave(recording, sound, uses[sound]) if recording else None
                done += 1
                self.progress(done, len(uses))
                if wave is not None:
                    yield wave, uses[sound]

    def _recording(self, file: str, files: PackFiles) -> Recording | None:
        try:
            path = files.find(file)
            if path is None:
                raise NoAudio("is missing")
            return decode(path, self.decoders)
        except ValueError as error:
            self.warn(str(error))
        except (NoAudio, OSError) as error:
            self.warn(f'"{file}" {error}')
        return None

    def _wave(self, recording: Recording, sound: Sound, keys: list[Key]) -> Wave | None:
        try:
            part = cut(recording, sound.start, sound.end, self.keep_silence)
        except NoAudio as error:
            codes = ", ".join(str(code) for _, code in keys)
            self.warn(f'key {codes}: "{sound.file}" {error}')
            return None
        return Wave(wave_bytes(part), part.rate)


def _uses(config: PackConfig) -> dict[Sound, list[Key]]:
    uses: dict[Sound, list[Key]] = {}
    for direction, sounds in (("press", config.press), ("release", config.release)):
        for code, sound in sounds.items():
            uses.setdefault(sound, []).append((direction, code))
    return uses


class PackWriter:
    """Collects the sounds of a pack in a folder, each one once."""

    def __init__(self, folder: Path | None) -> None:
        """Without a folder nothing is written, and only the count is kept."""
        self._sounds = folder / "sounds" if folder else None
        self._names: dict[Wave, str] = {}
        self.maps: dict[str, dict[int, str]] = {"press": {}, "release": {}}
        if self._sounds:
            self._sounds.mkdir(parents=True)

    @property
    def sound_count(self) -> int:
        return len(self._names)

    def add(self, wave: Wave, keys: list[Key]) -> None:
        if wave not in self._names:
            direction, code = keys[0]
            self._names[wave] = f"{direction}-{code}"
            if self._sounds:
                write_wave(self._sounds / f"{self._names[wave]}.wav", wave.frames, wave.rate)
        for direction, code in keys:
            self.maps[direction][code] = self._names[wave]


def convert_pack(
    config: PackConfig, files: PackFiles, converter: Converter, to: Path | None
) -> tuple[PackWriter, Path | None]:
    """Converts a pack into a new folder of `to`, or nowhere, and returns what it consists of and
    the folder. The pack is built in a folder that Clavo does not take for one and gets its place
    when it is whole."""
    if to is None:
        return _filled(PackWriter(None), config, files, converter), None
    to.mkdir(parents=True, exist_ok=True)
    with tempfile.TemporaryDirectory(prefix=".import-", dir=to) as building:
        partial = Path(building, "pack")
        pack = _filled(PackWriter(partial), config, files, converter)
        return pack, _placed(partial, pack, config, to)


def _filled(
    pack: PackWriter, config: PackConfig, files: PackFiles, converter: Converter
) -> PackWriter:
    for wave, keys in converter.waves(config, files):
        pack.add(wave, keys)
    if pack.sound_count == 0:
        raise Refused("none of its sounds can be read")
    return pack


def _placed(partial: Path, pack: PackWriter, config: PackConfig, to: Path) -> Path:
    taken = _ids_in(to)
    for pack_id in _possible_ids(config.name):
        if pack_id in taken or (to / pack_id).exists():
            continue
        manifest = json.dumps(_manifest(pack_id, pack, config), ensure_ascii=False, indent=2)
        (partial / "pack.json").write_text(manifest + "\n", encoding="utf-8")
        try:
            return partial.rename(to / pack_id)
        except OSError as error:
            # Another conversion took the name in the meantime.
            if error.errno not in (errno.ENOTEMPTY, errno.EEXIST, errno.ENOTDIR):
                raise
    raise AssertionError("the possible names never end")


def _manifest(pack_id: str, pack: PackWriter, config: PackConfig) -> dict[str, object]:
    manifest: dict[str, object] = {
        "id": pack_id,
        "name": config.name,
        "detail": "Converted from a Mechvibes pack",
        "category": "custom",
    }
    if config.author:
        manifest["credit"] = config.author
    for direction, names in pack.maps.items():
        manifest[direction] = {str(code): name for code, name in sorted(names.items())}
    return manifest


def _ids_in(folder: Path) -> set[str]:
    """What packs that are there call themselves; their folders may have any name."""
    ids = set()
    for manifest in folder.glob("*/pack.json"):
        # What cannot be read is no pack, and neither is what has no id.
        with contextlib.suppress(OSError, ValueError, RecursionError, LookupError, TypeError):
            ids.add(str(json.loads(manifest.read_bytes())["id"]))
    return ids


def _possible_ids(name: str) -> Iterator[str]:
    ascii_name = unicodedata.normalize("NFKD", name).encode("ascii", "ignore").decode().lower()
    stem = re.sub(r"[^a-z0-9]+", "-", ascii_name)[:60].strip("-") or "pack"
    yield stem
    for number in itertools.count(2):
        yield f"{stem}-{number}"
