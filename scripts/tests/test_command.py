# SPDX-License-Identifier: MIT
from __future__ import annotations

import json
import os
import resource
import shutil
import subprocess
import sys
import unittest
from pathlib import Path
from types import SimpleNamespace
from unittest import mock

from made_up import SCRIPT, MadeUpPacks, silence, write_sound
from mechvibes import convert
from mechvibes.audio import found_decoders
from mechvibes.config import Options, read_config
from mechvibes.source import PackFiles, PackSource

# A C library that cannot exchange two folders.
NO_EXCHANGE = mock.patch.object(convert, "ctypes", SimpleNamespace(CDLL=lambda _: object()))


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

    def test_pack_with_the_same_id_is_replaced_on_demand(self) -> None:
        self.convert("--replace")
        (self.to / "made-up").rename(self.to / "my folder")
        (self.to / "my folder" / "note").touch()
        self.write_multi({"31": "a.wav"})
        done = self.convert("--replace")
        self.assertIn(", in " + str(self.to / "my folder"), done.stdout)
        self.assertEqual(self.manifest("my folder")["press"], {"31": "press-31"})
        self.assertEqual([path.name for path in self.to.iterdir()], ["my folder"])
        self.assertEqual(sorted(path.name for path in (self.to / "my folder").iterdir()),
                         ["pack.json", "sounds"])

    def test_replacement_is_done_without_an_exchange_in_the_system(self) -> None:
        self.convert()
        self.write_multi({"31": "a.wav"})
        with NO_EXCHANGE:
            self.replace()
        self.assertEqual(self.manifest()["press"], {"31": "press-31"})

    def test_failed_replacement_keeps_the_old_pack(self) -> None:
        self.convert()
        self.write_multi({"31": "gone.wav"})
        self.assertIn("none of its sounds can be read", self.refusal("--replace"))
        self.assertEqual(self.manifest()["press"], {"30": "press-30"})

        self.write_multi({"31": "a.wav"})
        rename = Path.rename

        def renamed(path: Path, target: Path) -> Path:
            if path.name == "pack":
                raise OSError("no room")
            return rename(path, target)

        with NO_EXCHANGE, mock.patch.object(Path, "rename", renamed), \
                self.assertRaises(OSError):
            self.replace()
        self.assertEqual(self.manifest()["press"], {"30": "press-30"})
        self.assertEqual([path.name for path in self.to.iterdir()], ["made-up"])

    def replace(self) -> None:
        """As the command does it, in this process."""
        warnings: list[str] = []
        files = PackFiles(self.pack)
        source = PackSource(self.pack, self.pack / "config.json", "pack")
        config = read_config(source, files, Options(), warnings.append)
        converter = convert.Converter(found_decoders(), False, warnings.append, lambda *_: None)
        convert.convert_pack(config, files, converter, convert.Target(self.to, replaces=True))

    def test_only_a_pack_that_is_a_folder_of_its_own_is_replaced(self) -> None:
        self.convert()
        (self.to / "made-up").rename(self.folder / "elsewhere")
        (self.to / "made-up").symlink_to(self.folder / "elsewhere")
        self.assertIn("cannot replace made-up: it is a link", self.refusal("--replace"))
        self.assertTrue((self.to / "made-up").is_symlink())

        (self.to / "made-up").unlink()
        for name in ("a", "b"):
            shutil.copytree(self.folder / "elsewhere", self.to / name)
        self.assertIn("cannot replace a, b: they have the same id", self.refusal("--replace"))

    def test_folder_that_is_no_pack_is_not_replaced(self) -> None:
        (self.to / "made-up").mkdir(parents=True)
        self.convert("--replace")
        self.assertEqual(self.manifest("made-up-2")["id"], "made-up-2")

    def test_pipe_beside_the_packs_is_no_pack(self) -> None:
        (self.to / "x").mkdir(parents=True)
        os.mkfifo(self.to / "x" / "pack.json")
        self.convert()
        self.assertEqual(self.manifest()["id"], "made-up")

    def test_pack_is_named_after_a_folder_whose_name_is_no_text(self) -> None:
        self.write_config({"defines": {"30": "a.wav"}})
        self.pack = self.pack.rename(os.fsdecode(os.fsencode(self.folder) + b"/\xff\x1b[2J pack"))
        self.assertEqual(self.convert().stdout.split(":")[0], "[2J pack")
        self.assertEqual(self.manifest("2j-pack")["name"], "[2J pack")

    def test_folder_names_cannot_command_the_terminal(self) -> None:
        self.pack = self.pack.rename(self.folder / "\x1b[2J\u202e")
        self.write_multi({"30": "a.wav", "x": "a.wav"})
        self.assertEqual(self.convert().stderr,
                         '\ufffd[2J\ufffd: warning: "x" is no key number\n')

    def test_id_of_a_name_without_latin_letters_is_a_name_all_the_same(self) -> None:
        self.write_multi({"30": "a.wav"}, name="键盘")
        self.convert()
        self.assertEqual((self.manifest("pack")["id"], self.manifest("pack")["name"]),
                         ("pack", "键盘"))

    def test_long_conversion_prints_its_progress(self) -> None:
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
        """Converts two files. The second is a film: libsndfile refuses it, and the ffmpeg that is
        tried next sends the signal."""
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
