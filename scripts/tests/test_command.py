# SPDX-License-Identifier: MIT
from __future__ import annotations

import json
import os
import resource
import subprocess
import sys
import unittest
from pathlib import Path

from made_up import SCRIPT, MadeUpPacks, silence, write_sound


class Command(MadeUpPacks):
    def setUp(self) -> None:
        super().setUp()
        self.write_tone("a.wav")
        self.write_multi({"30": "a.wav"})

    def test_default_target_is_the_users_packs_folder(self) -> None:
        for environment, place in (({"XDG_DATA_HOME": f"{self.folder}/data"}, "data"),
                                   ({"XDG_DATA_HOME": "relative"}, ".local/share"),
                                   ({"XDG_DATA_HOME": ""}, ".local/share")):
            with self.subTest(place):
                done = self.run_script(self.pack,
                                       environment={"HOME": str(self.folder), **environment})
                self.assertEqual(done.returncode, 0, done.stderr)
                self.assertTrue((self.folder / place / "Clavo/Packs/made-up/pack.json").is_file())

    def test_list_names_the_packs_and_writes_nothing(self) -> None:
        done = self.run_script(self.pack, "--to", self.to, "--list")
        self.assertEqual((done.returncode, done.stdout),
                         (0, "Made Up: version 1, multi, 1 press and 0 release sounds\n"))
        self.assertFalse(self.to.exists())

    def test_dry_run_warns_and_writes_nothing(self) -> None:
        self.write_multi({"30": "a.wav", "31": "gone.wav"})
        done = self.run_script(self.pack, "--to", self.to, "--dry-run")
        self.assertEqual(
            (done.returncode, done.stdout),
            (0, "Made Up: 1 press and 0 release keys, 1 sounds; nothing was written\n"))
        self.assertIn('"gone.wav" is missing', done.stderr)
        self.assertFalse(self.to.exists())

    def test_wrong_command_line_ends_with_2(self) -> None:
        for arguments in ((), ("--nonsense", "x"), (self.pack, "--to")):
            self.assertEqual(self.run_script(*arguments).returncode, 2)

    def test_help_ends_with_0(self) -> None:
        self.assertEqual(self.run_script("--help").returncode, 0)

    def test_good_sources_are_converted_beside_a_bad_one(self) -> None:
        done = self.run_script(self.folder / "gone", self.pack, "--to", self.to)
        self.assertEqual(done.returncode, 1)
        self.assertIn("gone: error: there is no such file or folder", done.stderr)
        self.assertEqual(self.manifest()["id"], "made-up")

    def test_ids_are_made_unique(self) -> None:
        other = self.to / "some folder"
        other.mkdir(parents=True)
        (other / "pack.json").write_text('{"id": "made-up"}')
        for broken in ("", "[]", "{}"):
            (self.to / f"x{broken}").mkdir()
            (self.to / f"x{broken}" / "pack.json").write_text(broken)
        self.convert()
        self.convert()
        self.assertEqual(self.manifest("made-up-2")["id"], "made-up-2")
        self.assertEqual(self.manifest("made-up-3")["id"], "made-up-3")

    def test_id_of_a_name_without_latin_letters_is_a_name_all_the_same(self) -> None:
        self.write_multi({"30": "a.wav"}, name="键盘")
        self.convert()
        self.assertEqual((self.manifest("pack")["id"], self.manifest("pack")["name"]),
                         ("pack", "键盘"))

    def test_long_conversion_tells_its_progress(self) -> None:
        for number in range(1, 41):
            write_sound(self.pack / f"{number}.wav", [number / 50] * 100)
        self.write_multi({str(number): f"{number}.wav" for number in range(1, 41)})
        self.assertEqual(self.convert().stderr, "".join(
            f"pack: {done} of 40 sounds\n" for done in (10, 20, 30, 40)))

    def test_full_disk_leaves_nothing_behind(self) -> None:
        write_sound(self.pack / "big.wav", silence(2000))
        self.write_multi({"30": "a.wav", "31": "big.wav"})
        done = subprocess.run(
            [sys.executable, SCRIPT, self.pack, "--to", self.to], capture_output=True, text=True,
            preexec_fn=lambda: resource.setrlimit(resource.RLIMIT_FSIZE, (100_000, 100_000)),
            check=False)
        self.assertEqual(done.returncode, 1)
        self.assertIn("pack: error: ", done.stderr)
        self.assertNotIn("Traceback", done.stderr)
        self.assertEqual(list(self.to.iterdir()), [])

    def interrupted(self, signal: str) -> subprocess.CompletedProcess[str]:
        """The conversion of two files, of which the second is a film: libsndfile refuses it, and
        the ffmpeg it is then handed to sends the signal."""
        (self.pack / "b.wav").write_bytes(b"film")
        self.write_multi({"30": "a.wav", "31": "b.wav"})
        program = self.folder / "ffmpeg"
        program.write_text(f"#!/bin/sh\nkill -{signal} $PPID\n")
        program.chmod(0o755)
        path = f"{self.folder}{os.pathsep}{os.environ['PATH']}"
        return self.run_script(self.pack, "--to", self.to, environment={"PATH": path})

    def test_conversion_that_is_ended_leaves_nothing_behind(self) -> None:
        done = self.interrupted("TERM")
        self.assertEqual(done.returncode, 128 + 15)
        self.assertEqual(list(self.to.iterdir()), [])

    def test_conversion_that_is_killed_leaves_no_pack(self) -> None:
        done = self.interrupted("KILL")
        self.assertEqual(done.returncode, -9)
        self.assertEqual(list(self.to.glob("*/pack.json")), [])
        self.assertEqual(list(self.to.glob(".*/pack.json")), [])
        (self.pack / "b.wav").unlink()
        self.convert()
        self.assertEqual(self.manifest()["press"], {"30": "press-30"})

    def test_converted_pack_names_only_sounds_it_has(self) -> None:
        self.convert()
        pack = Path(self.to, "made-up")
        manifest = json.loads((pack / "pack.json").read_text())
        named = {*manifest["press"].values(), *manifest["release"].values()}
        self.assertEqual({f"{name}.wav" for name in named},
                         {path.name for path in (pack / "sounds").iterdir()})


if __name__ == "__main__":
    unittest.main()
