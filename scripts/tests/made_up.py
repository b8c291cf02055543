# SPDX-License-Identifier: MIT
"""Made-up packs, and the script as a command."""

from __future__ import annotations

import array
import ctypes
import json
import os
import subprocess
import sys
import tempfile
import unittest
import wave
from pathlib import Path
from typing import Any, Sequence

from mechvibes import audio

SCRIPT = Path(audio.__file__).parents[1] / "import_mechvibes.py"
RATE = 44100

# Formats of libsndfile: container and encoding.
WAV, FLAC, VORBIS, OPUS, MP3 = 0x010002, 0x170002, 0x200060, 0x200064, 0x230082


def tone(milliseconds: float, level: float = 0.5, rate: int = RATE) -> list[float]:
    """A square wave: loud from its first sample to its last."""
    count = round(milliseconds * rate / 1000)
    return [level if place // 20 % 2 == 0 else -level for place in range(count)]


def silence(milliseconds: float, rate: int = RATE) -> list[float]:
    return [0.0] * round(milliseconds * rate / 1000)


def write_sound(
    path: Path,
    samples: Sequence[float],
    rate: int = RATE,
    channels: int = 1,
    file_format: int = WAV,
) -> None:
    path.parent.mkdir(parents=True, exist_ok=True)
    library = ctypes.CDLL("libsndfile.so.1")
    library.sf_open.restype = ctypes.c_void_p
    library.sf_close.argtypes = (ctypes.c_void_p,)
    library.sf_write_float.argtypes = (ctypes.c_void_p, ctypes.c_void_p, ctypes.c_int64)
    info = audio._SndfileInfo(0, rate, channels, file_format, 0, 0)
    file = library.sf_open(os.fsencode(path), 0x20, ctypes.byref(info))
    assert file, path
    values = (ctypes.c_float * len(samples))(*samples)
    library.sf_write_float(file, values, len(samples))
    library.sf_close(file)


def read_wave(path: Path) -> tuple[list[float], int]:
    """Samples and rate of a converted sound."""
    with wave.open(str(path)) as file:
        assert (file.getnchannels(), file.getsampwidth()) == (1, 2)
        numbers = array.array("h", file.readframes(file.getnframes()))
        return [number / 32767 for number in numbers], file.getframerate()


class MadeUpPacks(unittest.TestCase):
    """A folder for made-up packs and a folder to convert them to."""

    def setUp(self) -> None:
        temporary = tempfile.TemporaryDirectory(prefix="clavo-test-")
        self.addCleanup(temporary.cleanup)
        self.folder = Path(temporary.name)
        self.pack = self.folder / "pack"
        self.to = self.folder / "to"

    def write_config(self, config: Any, name: str = "config.json") -> None:
        self.pack.mkdir(parents=True, exist_ok=True)
        text = config if isinstance(config, (str, bytes)) else json.dumps(config)
        (self.pack / name).write_bytes(text.encode() if isinstance(text, str) else text)

    def write_multi(self, defines: dict[str, Any], **more: Any) -> None:
        self.write_config(
            {"name": "Made Up", "key_define_type": "multi", "defines": defines, **more}
        )

    def write_single(self, defines: dict[str, Any], **more: Any) -> None:
        self.write_config(
            {
                "name": "Made Up",
                "key_define_type": "single",
                "sound": "all.wav",
                "defines": defines,
                **more,
            }
        )

    def write_tone(self, name: str, milliseconds: float = 50, level: float = 0.5) -> None:
        write_sound(self.pack / name, tone(milliseconds, level))

    def run_script(
        self, *arguments: object, environment: dict[str, str] | None = None
    ) -> subprocess.CompletedProcess[str]:
        return subprocess.run(
            [sys.executable, SCRIPT, *map(str, arguments)],
            env={**os.environ, **(environment or {})},
            capture_output=True,
            text=True,
            timeout=100,  # Ends only what would run for hours.
            check=False,
        )

    def refusal(self, *options: str) -> str:
        """What is printed about the pack, of which nothing is converted."""
        done = self.run_script(self.pack, "--to", self.to, *options)
        self.assertEqual((done.returncode, done.stdout), (1, ""), done.stderr)
        self.assertNotIn("Traceback", done.stderr)
        return done.stderr

    def convert(self, *options: str) -> subprocess.CompletedProcess[str]:
        done = self.run_script(self.pack, "--to", self.to, *options)
        self.assertEqual(done.returncode, 0, done.stderr)
        return done

    def manifest(self, pack_id: str = "made-up") -> Any:
        return json.loads((self.to / pack_id / "pack.json").read_text("utf-8"))

    def sound(self, scancode: int, direction: str = "press") -> list[float]:
        return self.sound_and_rate(scancode, direction)[0]

    def sound_and_rate(
        self, scancode: int, direction: str = "press"
    ) -> tuple[list[float], int]:
        name = self.manifest()[direction][str(scancode)]
        return read_wave(self.to / "made-up" / "sounds" / f"{name}.wav")

    def level(self, scancode: int, direction: str = "press") -> float:
        """The peak of a sound, by which the tests identify it."""
        return round(max(map(abs, self.sound(scancode, direction))), 2)
