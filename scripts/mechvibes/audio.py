# SPDX-License-Identifier: MIT
"""Decodes sound files with what is installed on the machine, and cuts sounds out of them."""

from __future__ import annotations

import array
import contextlib
import ctypes
import functools
import math
import os
import shutil
import struct
import subprocess
import sys
import wave
from dataclasses import dataclass
from pathlib import Path
from typing import Callable, Optional, Sequence

from mechvibes.report import Refused
from mechvibes.source import large_temporary_folder

# Seconds; a longer sound fades out there. `clavo-packs check` reports one that is longer.
LONGEST_SOUND = 3.0
LONGEST_SILENCE = 10.0  # Seconds in which a sound has to start.
SILENCE = 10 ** (-50 / 20)
_KEPT_SILENCE = 0.001  # Seconds.
_FADE_IN = 0.001
_FADE_OUT = 0.002
_LONG_FADE_OUT = 0.1

_LARGEST_FILE = 256 << 20
_MOST_SAMPLES = 1 << 26  # 256 MiB of floats, twelve minutes in stereo.
_HIGHEST_RATE = 768_000
_SECONDS_TO_DECODE = 120


class NoAudio(Exception):
    """A file cannot be decoded, or one of its parts holds no sound. The text is the reason."""


@dataclass(frozen=True)
class Recording:
    """Decoded audio: frames of `channels` samples each, from −1 to 1."""

    samples: array.array[float]
    channels: int
    rate: int

    @property
    def frames(self) -> int:
        return len(self.samples) // self.channels

    def part(self, first: int, last: int) -> memoryview:
        """The samples from one frame up to another."""
        return memoryview(self.samples)[first * self.channels : last * self.channels]


# Decodes the first seconds of a file by its content, not by its name. None when it cannot.
Decoder = Callable[[Path, float], Optional[Recording]]


def found_decoders() -> list[Decoder]:
    """The decoders on this machine, in the order to try them. Refused when there is none."""
    found = (_sndfile_decoder(), _ffmpeg_decoder())
    decoders = [decoder for decoder in found if decoder]
    if not decoders:
        raise Refused("nothing that decodes audio is installed; install libsndfile or ffmpeg, for "
                      "example with 'sudo apt install libsndfile1'")
    return decoders


def decode(file: Path, decoders: Sequence[Decoder], seconds: float = math.inf) -> Recording:
    """The start of a file, of this length or somewhat longer."""
    if file.stat().st_size > _LARGEST_FILE:
        raise NoAudio(f"is larger than {_LARGEST_FILE >> 20} MiB")
    for decoder in decoders:
        recording = decoder(file, seconds)
        if recording and recording.frames > 0 and recording.rate <= _HIGHEST_RATE:
            return recording
    raise NoAudio("cannot be decoded")


class _SndfileInfo(ctypes.Structure):
    _fields_ = [
        ("frames", ctypes.c_int64),
        ("samplerate", ctypes.c_int),
        ("channels", ctypes.c_int),
        ("format", ctypes.c_int),
        ("sections", ctypes.c_int),
        ("seekable", ctypes.c_int),
    ]


# The library itself: its program sndfile-convert gives quiet recordings another level.
_SNDFILE_NAMES = ("libsndfile.so.1", "libsndfile.dylib", "/opt/homebrew/lib/libsndfile.dylib")
_READ = 0x10
_BLOCK_SAMPLES = 1 << 17


def _sndfile_decoder() -> Decoder | None:
    for name in _SNDFILE_NAMES:
        with contextlib.suppress(OSError):
            library = ctypes.CDLL(name)
            library.sf_open_fd.restype = ctypes.c_void_p
            library.sf_readf_float.argtypes = (ctypes.c_void_p, ctypes.c_void_p, ctypes.c_int64)
            library.sf_readf_float.restype = ctypes.c_int64
            library.sf_close.argtypes = (ctypes.c_void_p,)
            return functools.partial(_read_with_sndfile, library)
    return None


def _read_with_sndfile(library: ctypes.CDLL, file: Path, seconds: float) -> Recording | None:
    info = _SndfileInfo()
    # By descriptor: with a name, the library would trust the suffix. The library owns the
    # descriptor from here on and closes it even when it cannot read the file.
    descriptor = os.open(file, os.O_RDONLY)
    handle = library.sf_open_fd(descriptor, _READ, ctypes.byref(info), 1)
    if not handle:
        return None
    try:
        most = min(_MOST_SAMPLES, seconds * info.samplerate * info.channels)
        return Recording(_sndfile_samples(library, handle, info.channels, most), info.channels,
                         info.samplerate)
    finally:
        library.sf_close(handle)


def _sndfile_samples(
    library: ctypes.CDLL, handle: int, channels: int, most: float
) -> array.array[float]:
    samples = array.array("f")
    block_frames = max(_BLOCK_SAMPLES // channels, 1)
    block = (ctypes.c_float * (block_frames * channels))()
    while len(samples) < most:
        frames = library.sf_readf_float(handle, block, block_frames)
        if frames <= 0:
            break
        samples.frombytes(memoryview(block).cast("B")[: frames * channels * samples.itemsize])
    return samples


# The formats of sound files and of films renamed to sound files. Play lists are not among them:
# they name other files.
_FFMPEG_FORMATS = ("wav,w64,aiff,au,caf,flac,mp3,ogg,aac,ac3,ape,wv,tta,mov,mp4,m4a,matroska,webm,"
                   "avi,asf,flv,mpeg,mpegts")
_FFMPEG_INPUT = f"-nostdin -v error -protocol_whitelist file -format_whitelist {_FFMPEG_FORMATS} -i"
# Sun audio: a header of 24 bytes, and then the samples.
_FFMPEG_OUTPUT = f"-map 0:a:0 -c:a pcm_f32be -fs {4 * _MOST_SAMPLES} -f au -y"


def _ffmpeg_decoder() -> Decoder | None:
    program = shutil.which("ffmpeg")
    if program is None:
        return None
    return functools.partial(_read_with_ffmpeg, program)


def _read_with_ffmpeg(program: str, file: Path, seconds: float) -> Recording | None:
    with large_temporary_folder() as folder:
        # Under a name without a suffix, for the reason given for libsndfile.
        source, target = Path(folder, "source"), Path(folder, "decoded")
        source.symlink_to(file.resolve())
        length = ["-t", f"{seconds:f}"] if seconds < math.inf else []
        command = [program, *_FFMPEG_INPUT.split(), f"file:{source}", *length,
                   *_FFMPEG_OUTPUT.split(), f"file:{target}"]
        try:
            done = subprocess.run(command, stdin=subprocess.DEVNULL, stdout=subprocess.DEVNULL,
                                  stderr=subprocess.DEVNULL, timeout=_SECONDS_TO_DECODE,
                                  check=False)
        except (subprocess.TimeoutExpired, OSError):
            return None
        return _sun_audio(target) if done.returncode == 0 and target.is_file() else None


def _sun_audio(path: Path) -> Recording | None:
    samples = array.array("f")
    with path.open("rb") as file:
        header = file.read(24)
        if len(header) < 24 or header[:4] != b".snd":
            return None
        start, _, encoding, rate, channels = struct.unpack(">5I", header[4:])
        if encoding != 6 or channels < 1 or rate < 1:
            return None
        file.seek(start)
        frames = max(path.stat().st_size - start, 0) // (4 * channels)
        samples.fromfile(file, frames * channels)
    if sys.byteorder == "little":
        samples.byteswap()
    return Recording(samples, channels, rate)


def cut(recording: Recording, start: float, end: float, keep_silence: bool) -> Recording:
    """The part between two times in milliseconds as a separate sound: one channel, without the
    silence before it, and at most LONGEST_SOUND long. An end at which something was cut off fades,
    so that it does not click."""
    first = min(round(start * recording.rate / 1000), recording.frames)
    last = recording.frames
    if end * recording.rate / 1000 < last:
        last = round(end * recording.rate / 1000)
    if first >= last:
        raise NoAudio("holds nothing in that part, or is too long to be read as far")
    if not keep_silence:
        first = _without_silence(recording, first, last)
    fade_in = _FADE_IN if first > 0 else 0.0
    fade_out = _FADE_OUT if last < recording.frames else 0.0
    if last - first > LONGEST_SOUND * recording.rate:
        last = first + round(LONGEST_SOUND * recording.rate)
        fade_out = _LONG_FADE_OUT
    samples = _mixed_down(recording, first, last)
    _fade(samples, round(fade_in * recording.rate))
    samples.reverse()
    _fade(samples, round(fade_out * recording.rate))
    samples.reverse()
    return Recording(samples, 1, recording.rate)


def _without_silence(recording: Recording, first: int, last: int) -> int:
    """The frame to start from. A part that starts with a long silence stays as it is."""
    last = min(last, first + round(LONGEST_SILENCE * recording.rate))
    part = recording.part(first, last)
    heard = next((place for place, sample in enumerate(part) if abs(sample) > SILENCE), None)
    if heard is None:
        return first
    start = first + heard // recording.channels
    return max(first, start - round(_KEPT_SILENCE * recording.rate))


def _mixed_down(recording: Recording, first: int, last: int) -> array.array[float]:
    channels = recording.channels
    part = recording.part(first, last)
    if channels == 1:
        return array.array("f", part)
    sides = (part[channel::channels] for channel in range(channels))
    return array.array("f", (sum(frame) / channels for frame in zip(*sides)))


def _fade(samples: array.array[float], length: int) -> None:
    for place in range(min(length, len(samples))):
        samples[place] *= place / length


def wave_bytes(recording: Recording) -> bytes:
    """The samples as a WAV file of 16 bits holds them."""
    numbers = array.array("h", map(_sample16, recording.samples))
    if sys.byteorder == "big":
        numbers.byteswap()
    return numbers.tobytes()


def _sample16(sample: float) -> int:
    # max() and min() would let a NaN through, which cannot be rounded.
    return round(max(-1.0, min(1.0, sample)) * 32767) if math.isfinite(sample) else 0


def write_wave(path: Path, frames: bytes, rate: int) -> None:
    with wave.open(str(path), "wb") as file:
        file.setnchannels(1)
        file.setsampwidth(2)
        file.setframerate(rate)
        file.writeframes(frames)
