# SPDX-License-Identifier: MIT
from __future__ import annotations

import stat
import unittest
import zipfile
from pathlib import Path
from unittest import mock

from made_up import MadeUpPacks
from mechvibes import source
from mechvibes.report import Refused


class Sources(MadeUpPacks):
    def setUp(self) -> None:
        super().setUp()
        self.write_tone("a.wav")
        self.write_multi({"30": "a.wav"})
        self.zip = self.folder / "packed.zip"

    def write_zip(self, *prefixes: str) -> None:
        with zipfile.ZipFile(self.zip, "w") as archive:
            for prefix in prefixes:
                for name in ("config.json", "a.wav"):
                    archive.writestr(prefix + name, (self.pack / name).read_bytes())

    def convert_zip(self) -> None:
        done = self.run_script(self.zip, "--to", self.to)
        self.assertEqual(done.returncode, 0, done.stderr)
        self.assertEqual(self.manifest()["press"], {"30": "press-30"})

    def refusal_of_zip(self) -> str:
        done = self.run_script(self.zip, "--to", self.to)
        self.assertEqual(done.returncode, 1)
        self.assertFalse(self.to.exists())
        return done.stderr

    def test_config_may_be_named_txt(self) -> None:
        (self.pack / "config.json").rename(self.pack / "config.txt")
        self.convert()

    def test_zip_of_files_is_a_pack(self) -> None:
        self.write_zip("")
        self.convert_zip()

    def test_zip_of_a_folder_is_a_pack(self) -> None:
        self.write_zip("My Pack/", "__MACOSX/")
        self.convert_zip()
        self.assertEqual(len(list(self.to.iterdir())), 1)

    def test_zip_with_backslashes_is_a_pack(self) -> None:
        self.write_zip("My Pack\\")
        self.convert_zip()

    def test_folder_of_packs_is_converted_whole(self) -> None:
        self.pack.rename(self.folder / "all")
        for name in ("one", "two"):
            self.pack = self.folder / "packs" / name
            self.write_tone("a.wav")
            self.write_multi({"30": "a.wav"}, name=name)
        done = self.run_script(self.folder / "packs", "--to", self.to)
        self.assertEqual(done.returncode, 0, done.stderr)
        self.assertEqual(sorted(path.name for path in self.to.iterdir()), ["one", "two"])

    def test_source_without_a_pack_is_refused(self) -> None:
        (self.pack / "config.json").unlink()
        done = self.run_script(self.pack, "--to", self.to)
        self.assertEqual(done.returncode, 1)
        self.assertIn("holds no config.json", done.stderr)

    def test_file_that_is_no_zip_is_refused(self) -> None:
        self.zip.write_bytes(b"PK\x03\x04 and then nothing")
        self.assertIn("neither a folder nor a zip", self.refusal_of_zip())

    def test_zip_cut_short_is_refused(self) -> None:
        self.write_zip("")
        content = bytearray(self.zip.read_bytes())
        content[60:120] = bytes(60)
        self.zip.write_bytes(content)
        self.assertIn("neither a folder nor a zip", self.refusal_of_zip())

    def test_zip_with_damaged_content_is_refused(self) -> None:
        for method in (zipfile.ZIP_DEFLATED, zipfile.ZIP_LZMA):
            with self.subTest(method):
                with zipfile.ZipFile(self.zip, "w", method) as archive:
                    archive.writestr("config.json", bytes(range(256)) * 100)
                content = bytearray(self.zip.read_bytes())
                content[41:80] = b"\xff" * 39
                self.zip.write_bytes(content)
                self.assertIn("neither a folder nor a zip", self.refusal_of_zip())

    def test_zip_names_cannot_command_the_terminal(self) -> None:
        self.write_zip("", "../\x1b]0;owned\x07\u202e/")
        self.assertIn('in the zip "../\ufffd]0;owned\ufffd\ufffd/config.json" leads out',
                      self.refusal_of_zip())

    def test_zip_whose_names_lead_out_is_refused(self) -> None:
        for name in ("../evil/", "/tmp/", "x/../../", "C:\\"):
            with self.subTest(name):
                self.write_zip("", name)
                self.assertIn("out of the pack", self.refusal_of_zip())
        self.assertFalse((self.folder / "evil").exists())

    def test_zip_with_a_link_is_refused(self) -> None:
        self.write_zip("")
        link = zipfile.ZipInfo("link.wav")
        link.external_attr = (stat.S_IFLNK | 0o777) << 16
        with zipfile.ZipFile(self.zip, "a") as archive:
            archive.writestr(link, "/etc/passwd")
        self.assertIn('"link.wav" is a link', self.refusal_of_zip())

    def test_zip_with_a_file_that_is_a_folder_is_refused(self) -> None:
        self.write_zip("", "a.wav/")
        self.assertIn("is a file and a folder", self.refusal_of_zip())


class Limits(MadeUpPacks):
    def unpack(self, archive: Path) -> None:
        with source.packs_in(archive):
            self.fail("was unpacked")

    def test_zip_that_unpacks_to_too_much_is_refused(self) -> None:
        archive = self.folder / "bomb.zip"
        with zipfile.ZipFile(archive, "w", zipfile.ZIP_DEFLATED) as packed:
            packed.writestr("config.json", "{}")
            packed.writestr("zeros", bytes(3 << 20))
        with mock.patch.object(source, "LARGEST_ZIP", 2 << 20), \
                self.assertRaisesRegex(Refused, "more than 2 MiB"):
            self.unpack(archive)

    def test_zip_of_too_many_files_is_refused(self) -> None:
        archive = self.folder / "many.zip"
        with zipfile.ZipFile(archive, "w") as packed:
            for number in range(11):
                packed.writestr(str(number), "")
        with mock.patch.object(source, "MOST_FILES", 10), \
                self.assertRaisesRegex(Refused, "11 files; 10 are the most"):
            self.unpack(archive)


if __name__ == "__main__":
    unittest.main()
