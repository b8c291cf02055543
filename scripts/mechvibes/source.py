# SPDX-License-Identifier: MIT
"""Finds the packs in a folder or a zip, and the files inside a pack."""

from __future__ import annotations

import contextlib
import lzma
import os
import re
import stat
import struct
import tempfile
import unicodedata
import zipfile
import zlib
from dataclasses import dataclass
from pathlib import Path, PurePosixPath
from typing import Iterator

from mechvibes.report import Refused

# Far more than any pack needs.
LARGEST_ZIP = 1 << 30
MOST_FILES = 10_000
_BLOCK = 1 << 20

_CONFIG_NAMES = ("config.json", "config.txt")


@dataclass(frozen=True)
class PackSource:
    """A folder with a config. The name is for people."""

    folder: Path
    config: Path
    name: str


def inside_name(name: str) -> PurePosixPath:
    """A file name in a pack as a path relative to the pack. ValueError when it leads out."""
    path = PurePosixPath(name.replace("\\", "/"))
    if path.is_absolute() or ".." in path.parts or re.match(r"[A-Za-z]:", name) or "\0" in name:
        raise ValueError(f'"{name}" leads out of the pack')
    return path


def _folded(path: PurePosixPath) -> str:
    return unicodedata.normalize("NFC", str(path)).casefold()


def _is_file(path: Path) -> bool:
    with contextlib.suppress(OSError):  # A name that is too long, for example.
        return path.is_file()
    return False


class PackFiles:
    """The files of a pack by the names that its config uses. Packs are made on systems on which
    `A.WAV` and `a.wav` are the same file."""

    def __init__(self, folder: Path) -> None:
        self._root = folder.resolve()
        self._by_folded: dict[str, Path] = {}
        for parent, _, names in os.walk(folder):
            for name in sorted(names):
                path = Path(parent, name)
                self._by_folded.setdefault(_folded(PurePosixPath(path.relative_to(folder))), path)
        self._folder = folder

    def find(self, name: str) -> Path | None:
        """The file of that name; None when there is none, ValueError when it lies outside."""
        inside = inside_name(name)
        exact = self._folder / inside
        path = exact if _is_file(exact) else self._by_folded.get(_folded(inside))
        if path is None or not _is_file(path):
            return None
        if not path.resolve().is_relative_to(self._root):
            raise ValueError(f'"{name}" is a link out of the pack')
        return path


def large_temporary_folder() -> tempfile.TemporaryDirectory[str]:
    """A temporary folder on a disk. /tmp is often in memory."""
    place = "/var/tmp"
    on_disk = "TMPDIR" not in os.environ and os.access(place, os.W_OK)
    return tempfile.TemporaryDirectory(prefix="clavo-import-", dir=place if on_disk else None)


@contextlib.contextmanager
def packs_in(source: Path) -> Iterator[list[PackSource]]:
    """The packs of a folder or a zip: the folder itself, or else those directly inside it. A zip is
    unpacked for the duration of the `with` block."""
    if source.is_dir():
        yield _packs_of_folder(source, source.resolve().name)
    elif source.is_file():
        with large_temporary_folder() as unpacked:
            _unpack(source, Path(unpacked))
            yield _packs_of_folder(Path(unpacked), source.stem)
    else:
        raise Refused("there is no such file or folder")


def _config_of(folder: Path) -> Path | None:
    return next((folder / name for name in _CONFIG_NAMES if (folder / name).is_file()), None)


def _packs_of_folder(folder: Path, name: str) -> list[PackSource]:
    config = _config_of(folder)
    if config is not None:
        return [PackSource(folder, config, name)]
    packs = []
    for inner in sorted(folder.iterdir()):
        hidden = inner.name.startswith(".") or inner.name == "__MACOSX"
        config = _config_of(inner) if inner.is_dir() and not hidden else None
        if config is not None:
            packs.append(PackSource(inner, config, inner.name))
    if not packs:
        raise Refused("holds no config.json, at its top or one folder down")
    return packs


def _unpack(archive: Path, to: Path) -> None:
    try:
        with zipfile.ZipFile(archive) as opened:
            _unpack_entries(opened, to)
    # zipfile raises the others for entries that are damaged or encrypted, or whose compression it
    # does not know.
    except (zipfile.BadZipFile, EOFError, RuntimeError, ValueError, struct.error, zlib.error,
            lzma.LZMAError) as error:
        raise Refused(f"is neither a folder nor a zip that can be read ({error})") from error


def _unpack_entries(archive: zipfile.ZipFile, to: Path) -> None:
    entries = [entry for entry in archive.infolist() if not entry.is_dir()]
    if len(entries) > MOST_FILES:
        raise Refused(f"the zip holds {len(entries)} files; {MOST_FILES} are the most")
    room = LARGEST_ZIP
    for entry in entries:
        try:
            target = to / inside_name(entry.filename)
        except ValueError as error:
            raise Refused(f"in the zip {error}") from error
        if stat.S_ISLNK(entry.external_attr >> 16):
            raise Refused(f'in the zip "{entry.filename}" is a link')
        room -= _unpack_entry(archive, entry, target, room)


def _unpack_entry(
    archive: zipfile.ZipFile, entry: zipfile.ZipInfo, target: Path, room: int
) -> int:
    """Returns the number of bytes unpacked; the size that the zip states may be wrong."""
    size = 0
    try:
        target.parent.mkdir(parents=True, exist_ok=True)
        with archive.open(entry) as packed, target.open("wb") as file:
            while block := packed.read(_BLOCK):
                size += len(block)
                if size > room:
                    raise Refused(f"the zip unpacks to more than {LARGEST_ZIP >> 20} MiB")
                file.write(block)
    except (FileExistsError, NotADirectoryError, IsADirectoryError) as error:
        raise Refused(f'in the zip "{entry.filename}" is a file and a folder') from error
    return size
