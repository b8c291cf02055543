# SPDX-License-Identifier: MIT
"""Writes one pack as a pack folder of Clavo."""

from __future__ import annotations

import contextlib
import ctypes
import errno
import hashlib
import itertools
import json
import os
import re
import tempfile
import unicodedata
from dataclasses import dataclass
from pathlib import Path
from typing import Callable, Iterator, Sequence, Tuple

from mechvibes.audio import (LONGEST_SILENCE, LONGEST_SOUND, SILENCE, Decoder, NoAudio, Recording,
                             cut, decode, wave_bytes, write_wave)
from mechvibes.config import PackConfig, Sound
from mechvibes.report import Refused, Warn
from mechvibes.source import PackFiles

# Bytes of all sounds together. Clavo loads five minutes of a pack, which take 115 MB at 192 kHz.
LARGEST_PACK = 128 << 20
LARGEST_MANIFEST = 16 << 20  # Bytes; Clavo reads no larger one.

# Called with the number of sounds done and the number of all.
Progress = Callable[[int, int], None]

Key = Tuple[str, int]  # "press" or "release", and the scancode.


@dataclass(frozen=True)
class Wave:
    """The content of a sound file: 16 bits, one channel."""

    frames: bytes
    rate: int


@dataclass(frozen=True)
class Converter:
    """Makes the sounds of a pack."""

    decoders: Sequence[Decoder]
    keep_silence: bool
    warn: Warn
    progress: Progress

    def waves(self, config: PackConfig, files: PackFiles) -> Iterator[tuple[Wave, list[Key]]]:
        """Every sound of the pack and its keys. One recording is in memory at a time."""
        uses = _uses(config)
        done = 0
        for file in dict.fromkeys(sound.file for sound in uses):
            sounds = [sound for sound in uses if sound.file == file]
            recording = self._recording(file, files, max(map(_seconds_needed, sounds)))
            for sound in sounds:
                wave = self._wave(recording, sound, uses[sound]) if recording else None
                done += 1
                self.progress(done, len(uses))
                if wave is not None:
                    yield wave, uses[sound]

    def _recording(self, file: str, files: PackFiles, seconds: float) -> Recording | None:
        try:
            path = files.find(file)
            if path is None:
                raise NoAudio("is missing")
            return decode(path, self.decoders, seconds)
        except ValueError as error:
            self.warn(str(error))
        except (NoAudio, OSError) as error:
            self.warn(f'"{file}" {error}')
        return None

    def _wave(self, recording: Recording, sound: Sound, keys: list[Key]) -> Wave | None:
        subject = f'key {", ".join(str(code) for _, code in keys)}: "{sound.file}"'
        try:
            part = cut(recording, sound.start, sound.end, self.keep_silence)
        except NoAudio as error:
            self.warn(f"{subject} {error}")
            return None
        if max(map(abs, part.samples)) <= SILENCE:
            self.warn(f"{subject} is silent")
        return Wave(wave_bytes(part), part.rate)


def _seconds_needed(sound: Sound) -> float:
    """How much of its file is needed for a sound and to see whether the file goes on after it."""
    longest = sound.start / 1000 + LONGEST_SILENCE + LONGEST_SOUND
    return min(sound.end / 1000, longest) + 1


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
        self._names: dict[bytes, str] = {}  # By the digest of the sound.
        self._size = 0
        self.maps: dict[str, dict[int, str]] = {"press": {}, "release": {}}
        if self._sounds:
            self._sounds.mkdir(parents=True)

    @property
    def sound_count(self) -> int:
        return len(self._names)

    def add(self, wave: Wave, keys: list[Key]) -> None:
        digest = hashlib.sha256(f"{wave.rate} ".encode() + wave.frames).digest()
        if digest not in self._names:
            self._size += len(wave.frames)
            if self._size > LARGEST_PACK:
                raise Refused(f"its sounds take more than {LARGEST_PACK >> 20} MiB")
            direction, code = keys[0]
            self._names[digest] = f"{direction}-{code}"
            if self._sounds:
                write_wave(self._sounds / f"{self._names[digest]}.wav", wave.frames, wave.rate)
        for direction, code in keys:
            self.maps[direction][code] = self._names[digest]


@dataclass(frozen=True)
class Target:
    """The folder to put packs into, and whether a pack replaces the one with the same id."""

    folder: Path
    replaces: bool


def convert_pack(
    config: PackConfig, files: PackFiles, converter: Converter, target: Target | None
) -> tuple[PackWriter, Path | None]:
    """Converts a pack, into a folder of the target if there is one. Returns its content and that
    folder. The pack is built in a folder that Clavo does not take for a pack, and moved to its
    place when it is complete."""
    if target is None:
        return _filled(PackWriter(None), config, files, converter), None
    target.folder.mkdir(parents=True, exist_ok=True)
    with tempfile.TemporaryDirectory(prefix=".import-", dir=target.folder) as building:
        partial = Path(building, "pack")
        pack = _filled(PackWriter(partial), config, files, converter)
        return pack, _placed(partial, pack, config, target)


def _filled(
    pack: PackWriter, config: PackConfig, files: PackFiles, converter: Converter
) -> PackWriter:
    for wave, keys in converter.waves(config, files):
        pack.add(wave, keys)
    if pack.sound_count == 0:
        raise Refused("none of its sounds can be read")
    return pack


def _placed(partial: Path, pack: PackWriter, config: PackConfig, target: Target) -> Path:
    """Moves the pack to its place, which it returns."""
    folders = _folders_by_id(target.folder)
    first_id = next(_possible_ids(config.name))
    if target.replaces and first_id in folders:
        _write_manifest(partial, first_id, pack, config)
        _replace(folders[first_id], partial)
        return folders[first_id][0]
    for pack_id in _possible_ids(config.name):
        place = target.folder / pack_id
        if pack_id in folders or place.exists():
            continue
        _write_manifest(partial, pack_id, pack, config)
        try:
            return partial.rename(place)
        except OSError as error:
            # Another conversion took the name in the meantime.
            if error.errno not in (errno.ENOTEMPTY, errno.EEXIST, errno.ENOTDIR):
                raise
    raise AssertionError("the possible names never end")


def _replace(packs: Sequence[Path], pack: Path) -> None:
    """Puts the pack in the place of the only one of these, which takes its place."""
    if len(packs) > 1 or packs[0].is_symlink():
        names = ", ".join(folder.name for folder in packs)
        raise Refused(f"cannot replace {names}: " +
                      ("it is a link" if len(packs) == 1 else "they have the same id"))
    with contextlib.suppress(AttributeError):  # A C library without the function.
        at_working_folder, exchange = -100, 2
        if ctypes.CDLL(None).renameat2(at_working_folder, os.fsencode(pack), at_working_folder,
                                       os.fsencode(packs[0]), exchange) == 0:
            return
    old = packs[0].rename(pack.with_name("old"))
    try:
        pack.rename(packs[0])
    except BaseException:
        old.rename(packs[0])
        raise


def _write_manifest(folder: Path, pack_id: str, pack: PackWriter, config: PackConfig) -> None:
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
    text = json.dumps(manifest, ensure_ascii=False, indent=2)
    (folder / "pack.json").write_text(text + "\n", encoding="utf-8")


def _folders_by_id(packs: Path) -> dict[str, list[Path]]:
    """The packs of a folder by the id in their manifest."""
    folders: dict[str, list[Path]] = {}
    for manifest in sorted(packs.glob("*/pack.json")):
        # A file that cannot be read or has no id is no pack, nor is a pipe, which would never end.
        with contextlib.suppress(OSError, ValueError, RecursionError, LookupError, TypeError):
            if manifest.is_file() and manifest.stat().st_size <= LARGEST_MANIFEST:
                pack_id = str(json.loads(manifest.read_bytes())["id"])
                folders.setdefault(pack_id, []).append(manifest.parent)
    return folders


def _possible_ids(name: str) -> Iterator[str]:
    ascii_name = unicodedata.normalize("NFKD", name).encode("ascii", "ignore").decode().lower()
    stem = re.sub(r"[^a-z0-9]+", "-", ascii_name)[:60].strip("-") or "pack"
    yield stem
    for number in itertools.count(2):
        yield f"{stem}-{number}"
