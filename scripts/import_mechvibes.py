#!/usr/bin/env python3
# SPDX-License-Identifier: MIT
"""Converts Mechvibes sound packs into packs of Clavo."""

from __future__ import annotations

import argparse
import os
import signal
import sys
from io import TextIOWrapper
from pathlib import Path
from typing import NoReturn, cast

sys.dont_write_bytecode = True  # The installed place is not the user's to write to.

from mechvibes.audio import found_decoders  # noqa: E402
from mechvibes.config import Options, PackConfig, read_config  # noqa: E402
from mechvibes.convert import Converter, Progress, Target, convert_pack  # noqa: E402
from mechvibes.report import Refused, Warn, printable  # noqa: E402
from mechvibes.source import PackFiles, PackSource, packs_in  # noqa: E402

_EPILOG = """Exit status: 0 when all went well, 1 when a pack or a source could not be converted,
2 when the command line is wrong or no program that decodes audio is installed."""


def user_packs_folder() -> Path:
    """Where Clavo looks for the user's packs."""
    if sys.platform == "darwin":
        return Path.home() / "Library/Application Support/Clavo/Packs"
    data = os.environ.get("XDG_DATA_HOME", "")
    base = Path(data) if os.path.isabs(data) else Path.home() / ".local/share"
    return base / "Clavo/Packs"


def _arguments() -> argparse.Namespace:
    parser = argparse.ArgumentParser(description=__doc__, epilog=_EPILOG)
    parser.add_argument("sources", metavar="SOURCE", nargs="+", type=Path,
                        help="a pack as a folder or a zip, or a folder of packs")
    parser.add_argument("--to", metavar="DIR", type=Path, default=user_packs_folder(),
                        help="the folder to put the packs into (Clavo's own: %(default)s)")
    parser.add_argument("--list", action="store_true", help="only say which packs there are")
    parser.add_argument("--dry-run", action="store_true",
                        help="convert, say what would come of it, and write nothing")
    parser.add_argument("--replace", action="store_true",
                        help="replace the pack that has the same id, instead of adding another")
    parser.add_argument("--keep-silence", action="store_true",
                        help="leave the silence before sounds; it is felt as a delay")
    parser.add_argument("--pairs", action="store_true",
                        help="where keys have a list of times, take the first two as press and "
                             "release instead of variants")
    return parser.parse_args()


def _say(text: str) -> None:
    print(printable(text), flush=True)


def _complain(text: str) -> None:
    print(printable(text), file=sys.stderr, flush=True)


def _warner(subject: str) -> Warn:
    return lambda text: _complain(f"{subject}: warning: {text}")


def _progress(subject: str) -> Progress:
    """A counter on a terminal. Elsewhere a line for each quarter of a long conversion."""

    def on_terminal(done: int, total: int) -> None:
        end = "\r" if done < total else "\r\033[K"
        print(f"{printable(subject)}: {done} of {total} sounds", end=end, file=sys.stderr,
              flush=True)

    def in_lines(done: int, total: int) -> None:
        if total >= 20 and done * 4 // total > (done - 1) * 4 // total:
            _complain(f"{subject}: {done} of {total} sounds")

    return on_terminal if sys.stderr.isatty() else in_lines


def _listed(config: PackConfig) -> str:
    return (f"{config.name}: {config.kind}, {len(config.press)} press and "
            f"{len(config.release)} release sounds")


def _convert(source: PackSource, arguments: argparse.Namespace) -> None:
    files = PackFiles(source.folder)
    warn = _warner(source.name)
    config = read_config(source, files, Options(pairs=arguments.pairs), warn)
    if arguments.list:
        _say(_listed(config))
        return
    converter = Converter(found_decoders(), arguments.keep_silence, warn, _progress(source.name))
    target = None if arguments.dry_run else Target(arguments.to, arguments.replace)
    pack, folder = convert_pack(config, files, converter, target)
    result = (f"{len(pack.maps['press'])} press and {len(pack.maps['release'])} release keys, "
              f"{pack.sound_count} sounds")
    _say(f"{config.name}: {result}" + (f", in {folder}" if folder else "; nothing was written"))


def _refuse(subject: object, reason: object) -> None:
    _complain(f"{subject}: error: {reason}")


def _convert_source(source: Path, arguments: argparse.Namespace) -> bool:
    """Converts all packs of a source. Returns whether none failed."""
    good = True
    try:
        with packs_in(source) as packs:
            for pack in packs:
                try:
                    _convert(pack, arguments)
                except (Refused, OSError) as error:
                    _refuse(pack.name, error)
                    good = False
    except (Refused, OSError) as error:
        _refuse(source, error)
        good = False
    return good


def _end(number: int, _: object) -> NoReturn:
    sys.exit(128 + number)  # Removes the temporary folders on its way.


def main() -> int:
    arguments = _arguments()
    # A name may hold letters that the terminal's encoding lacks.
    cast(TextIOWrapper, sys.stdout).reconfigure(errors="replace")
    signal.signal(signal.SIGTERM, _end)
    signal.signal(signal.SIGINT, _end)
    if not arguments.list:
        try:
            found_decoders()
        except Refused as error:
            _refuse("import_mechvibes.py", error)
            return 2
    # Every source gets its turn, also after one that failed.
    results = [_convert_source(source, arguments) for source in arguments.sources]
    return 0 if all(results) else 1


if __name__ == "__main__":
    sys.exit(main())
