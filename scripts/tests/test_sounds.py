# SPDX-License-Identifier: MIT
from __future__ import annotations

import os
import shutil
import subprocess
import tracemalloc
import unittest
from pathlib import Path
from unittest import mock

from made_up import (FLAC, MP3, OPUS, RATE, VORBIS, WAV, MadeUpPacks, silence, tone, write_sound)
from mechvibes import audio, convert
from mechvibes.config import Options, read_config
from mechvibes.report import Refused
from mechvibes.source import PackFiles, PackSource


class Cutting(MadeUpPacks):
    def test_part_past_the_end_is_clamped(self) -> None:
        self.write_tone("all.wav", 100)
        self.write_single({"30": [50, 500], "31": [-50, 100]})
        self.convert()
        self.assertEqual([len(self.sound(30)), len(self.sound(31))], [2205, 2205])

    def test_part_without_length_is_dropped(self) -> None:
        self.write_tone("all.wav", 100)
        self.write_single({"30": [0, 100], "31": [0, 0], "32": [50, -10], "33": [100, 10]})
        done = self.convert()
        self.assertEqual(list(self.manifest()["press"]), ["30"])
        self.assertEqual(done.stderr.count("warning"), 3)

    def test_parts_may_overlap_and_be_shared(self) -> None:
        self.write_tone("all.wav", 100)
        self.write_single({"30": [0, 60], "31": [40, 60], "32": [0, 60]})
        self.convert()
        press = self.manifest()["press"]
        self.assertEqual(press["30"], press["32"])
        self.assertEqual(len(list((self.to / "made-up" / "sounds").iterdir())), 2)

    def test_cuts_fade(self) -> None:
        self.write_tone("all.wav", 100)
        self.write_single({"30": [20, 50]})
        self.convert()
        samples = [abs(sample) for sample in self.sound(30)]
        self.assertEqual([samples[0], samples[-1]], [0, 0])
        self.assertLess(samples[22], 0.26)
        self.assertAlmostEqual(samples[44], 0.5, places=3)
        self.assertAlmostEqual(samples[-89], 0.5, places=3)
        self.assertLess(samples[-44], 0.26)

    def test_whole_file_is_kept_as_it_is(self) -> None:
        self.write_tone("a.wav", 50)
        self.write_multi({"30": "a.wav"})
        self.convert()
        for converted, original in zip(self.sound(30), tone(50), strict=True):
            self.assertAlmostEqual(converted, original, places=4)

    def test_silence_before_a_sound_is_trimmed_to_a_millisecond(self) -> None:
        write_sound(self.pack / "a.wav", [0.002] * 2205 + tone(50))
        self.write_multi({"30": "a.wav"})
        self.convert()
        samples = self.sound(30)
        self.assertEqual(len(samples), 44 + 2205)
        self.assertAlmostEqual(samples[44], 0.5, places=3)

    def test_silence_before_a_sound_is_kept_on_demand(self) -> None:
        write_sound(self.pack / "a.wav", silence(50) + tone(50))
        self.write_multi({"30": "a.wav"})
        self.convert("--keep-silence")
        self.assertEqual(len(self.sound(30)), 4410)

    def test_sound_that_is_silent_stays_so_and_is_named(self) -> None:
        write_sound(self.pack / "a.wav", silence(50))
        self.write_tone("b.wav", level=0.01)
        self.write_multi({"30": "a.wav", "31": "a.wav", "32": "b.wav"})
        done = self.convert()
        self.assertEqual(self.sound(30), [0.0] * 2205)
        self.assertEqual(done.stderr, 'pack: warning: key 30, 31: "a.wav" is silent\n')

    def test_long_sound_fades_out_at_three_seconds(self) -> None:
        self.write_tone("a.wav", 5000)
        self.write_multi({"30": "a.wav"})
        self.convert()
        samples = self.sound(30)
        self.assertEqual(len(samples), 3 * RATE)
        self.assertEqual(samples[-1], 0)
        self.assertAlmostEqual(abs(samples[-RATE // 20]), 0.25, places=2)

    @unittest.skipUnless("CLAVO_PACKS" in os.environ, "CTest names the program")
    def test_longest_sound_is_not_too_long_for_the_check(self) -> None:
        for rate in (44100, 48000, 22050):
            write_sound(self.pack / f"{rate}.wav", tone(5000, rate=rate), rate)
        self.write_multi({"30": "44100.wav", "31": "48000.wav", "32": "22050.wav"})
        self.convert()
        check = [os.environ["CLAVO_PACKS"], "check", self.to / "made-up"]
        self.assertEqual(subprocess.run(check, stdout=subprocess.DEVNULL).returncode, 0)

    def test_no_more_is_decoded_than_is_needed(self) -> None:
        write_sound(self.pack / "a.wav", tone(60_000))
        recording = audio.decode(self.pack / "a.wav", audio.found_decoders(), seconds=2)
        self.assertGreaterEqual(recording.frames, 2 * RATE)
        self.assertLess(recording.frames, 6 * RATE)

    def test_part_that_ends_before_its_file_fades_out(self) -> None:
        self.write_tone("all.wav", 60_000)
        self.write_single({"30": [1000, 500]})
        self.convert()
        self.assertEqual(self.sound(30)[-1], 0)

    def test_sound_after_a_long_silence_is_silent(self) -> None:
        write_sound(self.pack / "a.wav", silence(11_000) + tone(50))
        self.write_multi({"30": "a.wav"})
        self.assertIn('"a.wav" is silent', self.convert().stderr)

    def test_too_loud_is_clipped_and_no_number_is_silence(self) -> None:
        write_sound(self.pack / "a.wav", [0.5, 1.5, -1.5, float("nan"), 0.5],
                    file_format=0x010006)
        self.write_multi({"30": "a.wav"})
        self.convert()
        self.assertEqual([round(sample, 2) for sample in self.sound(30)], [0.5, 1, -1, 0, 0.5])


class Limits(MadeUpPacks):
    def convert_here(self, target: convert.Target | None) -> None:
        files = PackFiles(self.pack)
        source = PackSource(self.pack, self.pack / "config.json", "pack")
        config = read_config(source, files, Options(), lambda _: None)
        converter = convert.Converter(audio.found_decoders(), False, lambda _: None,
                                      lambda *_: None)
        convert.convert_pack(config, files, converter, target)

    def test_sounds_that_take_too_much_together_are_refused(self) -> None:
        for name, level in (("a.wav", 0.25), ("b.wav", 0.5)):
            self.write_tone(name, 1000, level)
        self.write_multi({"30": "a.wav", "31": "b.wav", "32": "a.wav"})
        for target in (None, convert.Target(self.to, replaces=False)):
            with self.subTest(target), \
                    mock.patch.object(convert, "LARGEST_PACK", 4 * RATE - 1), \
                    self.assertRaisesRegex(Refused, "take more than 0 MiB"):
                self.convert_here(target)
        self.assertEqual(list(self.to.iterdir()), [])
        with mock.patch.object(convert, "LARGEST_PACK", 4 * RATE):
            self.convert_here(convert.Target(self.to, replaces=False))
        self.assertEqual(len(list((self.to / "made-up" / "sounds").iterdir())), 2)

    def test_sounds_are_not_kept_in_memory(self) -> None:
        pack = convert.PackWriter(None)
        tracemalloc.start()
        self.addCleanup(tracemalloc.stop)
        for number in range(100):
            pack.add(convert.Wave(number.to_bytes(100_000, "big"), RATE), [("press", number)])
        self.assertEqual(pack.sound_count, 100)
        self.assertLess(tracemalloc.get_traced_memory()[0], 1_000_000)

    def test_rate_that_no_sound_has_is_refused(self) -> None:
        write_sound(self.pack / "a.wav", tone(50, rate=1_000_000), 1_000_000)
        self.write_multi({"30": "a.wav"})
        self.assertIn('"a.wav" cannot be decoded', self.refusal())


class Files(MadeUpPacks):
    def test_audio_is_recognised_by_content(self) -> None:
        formats = {"30": WAV, "31": FLAC, "32": VORBIS, "33": OPUS, "34": MP3}
        for name, file_format in formats.items():
            write_sound(self.pack / f"{name}.raw", tone(100, 0.3, 48000), 48000,
                        file_format=file_format)
        self.write_multi({name: f"{name}.raw" for name in formats})
        done = self.convert()
        self.assertEqual(done.stderr, "")
        for name in formats:
            samples, rate = self.sound_and_rate(int(name))
            self.assertEqual(rate, 48000)
            middle = samples[1500:3500]
            level = (sum(sample * sample for sample in middle) / len(middle)) ** 0.5
            self.assertAlmostEqual(level, 0.3, delta=0.03, msg=name)

    def test_each_file_keeps_its_rate(self) -> None:
        write_sound(self.pack / "a.wav", tone(50, rate=22050), 22050)
        write_sound(self.pack / "b.wav", tone(50, rate=48000), 48000)
        self.write_multi({"30": "a.wav", "31": "b.wav"})
        self.convert()
        self.assertEqual([self.sound_and_rate(30)[1], self.sound_and_rate(31)[1]], [22050, 48000])

    def test_channels_are_mixed_down(self) -> None:
        sides = [sample for pair in zip(tone(50, 0.5), tone(50, 0.1)) for sample in pair]
        write_sound(self.pack / "a.wav", sides, channels=2)
        self.write_multi({"30": "a.wav"})
        self.convert()
        self.assertEqual((self.level(30), len(self.sound(30))), (0.3, 2205))

    def test_missing_or_unreadable_file_leaves_its_key_out(self) -> None:
        self.write_tone("a.wav")
        (self.pack / "noise.wav").write_bytes(b"no audio at all" * 50)
        (self.pack / "empty.wav").touch()
        self.write_multi({"30": "a.wav", "31": "gone.wav", "32": "noise.wav", "33": "empty.wav"})
        done = self.convert()
        self.assertEqual(list(self.manifest()["press"]), ["30"])
        self.assertIn('"gone.wav" is missing', done.stderr)
        self.assertIn('"noise.wav" cannot be decoded', done.stderr)
        self.assertIn('"empty.wav" cannot be decoded', done.stderr)

    def test_pack_without_a_readable_sound_is_refused(self) -> None:
        self.write_multi({"30": "gone.wav"})
        done = self.run_script(self.pack, "--to", self.to)
        self.assertEqual(done.returncode, 1)
        self.assertIn("none of its sounds can be read", done.stderr)
        self.assertEqual(list(self.to.iterdir()), [])

    def test_equal_sounds_are_written_once(self) -> None:
        self.write_tone("a.wav")
        self.write_tone("b.wav")
        self.write_multi({"30": "a.wav", "31": "a.wav", "32": "b.wav"})
        self.convert()
        self.assertEqual(len(list((self.to / "made-up" / "sounds").iterdir())), 1)
        self.assertEqual(len(self.manifest()["press"]), 3)

    def test_names_may_differ_in_case_and_slashes(self) -> None:
        self.write_tone("Sounds/A.WAV")
        self.write_multi({"30": "sounds\\a.wav"})
        self.convert()
        self.assertEqual(self.level(30), 0.5)

    def test_names_that_lead_out_of_the_pack_are_refused(self) -> None:
        self.write_tone("a.wav")
        write_sound(self.folder / "secret.wav", tone(50))
        (self.pack / "link.wav").symlink_to(self.folder / "secret.wav")
        self.write_multi({"30": "a.wav", "31": "../secret.wav", "34": "link.wav",
                          "32": str(self.folder / "secret.wav"), "33": "C:\\secret.wav"})
        done = self.convert()
        self.assertEqual(list(self.manifest()["press"]), ["30"])
        self.assertEqual(done.stderr.count("out of the pack"), 4)


class Decoders(MadeUpPacks):
    def test_machine_without_one_is_refused_clearly(self) -> None:
        with mock.patch("ctypes.CDLL", side_effect=OSError), \
                mock.patch.dict(os.environ, PATH=str(self.folder)), \
                self.assertRaisesRegex(Refused, "install libsndfile or ffmpeg"):
            audio.found_decoders()

    def test_ffmpeg_alone_is_enough(self) -> None:
        program = self.folder / "ffmpeg"
        # Decodes everything into two frames of two channels.
        program.write_text("#!/bin/sh\nfor last; do :; done\n"
                           "printf '.snd\\0\\0\\0\\030\\0\\0\\0\\020\\0\\0\\0\\006\\0\\0\\254\\104"
                           "\\0\\0\\0\\002"
                           "\\077\\0\\0\\0\\0\\0\\0\\0\\277\\0\\0\\0\\0\\0\\0\\0' >\"${last#file:}\"")
        program.chmod(0o755)
        self.write_tone("a.wav")
        with mock.patch("ctypes.CDLL", side_effect=OSError), \
                mock.patch.dict(os.environ, PATH=f"{self.folder}:{os.environ['PATH']}"):
            recording = audio.decode(self.pack / "a.wav", audio.found_decoders())
        self.assertEqual((list(recording.samples), recording.channels, recording.rate),
                         ([0.5, 0, -0.5, 0], 2, 44100))

    @unittest.skipUnless(shutil.which("ffmpeg"), "there is no ffmpeg")
    def test_real_ffmpeg_decodes_like_libsndfile(self) -> None:
        for file_format in (WAV, FLAC, MP3):
            write_sound(self.pack / "-a.txt", tone(100, 0.2), file_format=file_format)
            by_library, by_program = (audio.decode(Path(self.pack, "-a.txt"), [decoder])
                                      for decoder in audio.found_decoders())
            self.assertEqual(by_library.rate, by_program.rate)
            for one, other in zip(by_library.samples, by_program.samples):
                self.assertAlmostEqual(one, other, places=3)


if __name__ == "__main__":
    unittest.main()
