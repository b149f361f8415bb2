#!/usr/bin/env python3
"""What an installation holds, and that the installed program finds it: install_test.py BUILD-FOLDER SOURCE-FOLDER."""

import json
import os
import re
import shutil
import subprocess
import sys
import tempfile
import unittest
from pathlib import Path

BUILD, SOURCE = (Path(argument).resolve() for argument in sys.argv[1:3])
ID = "com.tamsel.quillary"


class Installed(unittest.TestCase):
    @classmethod
    def setUpClass(cls):
        cls.folder = Path(cls.enterClassContext(tempfile.TemporaryDirectory(prefix="quillary-install-")))
        # Staged as packagers do it, below a prefix that is not the default one.
        subprocess.run(["cmake", "--install", BUILD, "--prefix", "/opt/quillary"], check=True,
                       stdout=subprocess.DEVNULL, env={**os.environ, "DESTDIR": str(cls.folder)})
        cls.prefix = cls.folder / "opt" / "quillary"

    def quillary(self, *arguments):
        home = self.folder / "home"
        variables = {"HOME": str(home), "PATH": "/usr/bin:/bin", "LC_ALL": "C.UTF-8"}
        return subprocess.run([self.prefix / "bin" / "quillary", "--json", *arguments], env=variables, check=True,
                              stdout=subprocess.PIPE, timeout=60).stdout

    def test_finds_its_parts_wherever_it_was_put(self):
        icons = json.loads(self.quillary("list", "builtin"))
        self.assertGreaterEqual(len(icons), 50)
        for folder in (self.prefix, self.folder / "elsewhere"):
            if not folder.exists():
                self.prefix.rename(folder)
                type(self).prefix = folder
            picture = self.folder / "icon.png"
            facts = json.loads(self.quillary("intake", str(SOURCE / "resources/icon/quillary.svg"),
                                             "--output", str(picture)))
            self.assertEqual(facts["formatLabel"], "SVG")
            self.assertEqual(json.loads(self.quillary("intake", str(picture)))["formatLabel"], "PNG")
        self.prefix.rename(self.folder / "opt" / "quillary")
        type(self).prefix = self.folder / "opt" / "quillary"

    def test_desktop_files_are_valid(self):
        share = self.prefix / "share"
        checks = [["desktop-file-validate", share / "applications" / f"{ID}.desktop"],
                  ["appstreamcli", "validate", "--no-net", share / "metainfo" / f"{ID}.metainfo.xml"]]
        for check in checks:
            done = subprocess.run(check, stdout=subprocess.PIPE, stderr=subprocess.STDOUT, text=True)
            self.assertEqual((done.returncode, re.findall(r"^[EW]:.*", done.stdout, re.M)), (0, []), done.stdout)
        subprocess.run(["update-mime-database", share / "mime"], check=True, stderr=subprocess.DEVNULL)
        self.assertIn("*.fcpxml", (share / "mime" / "globs2").read_text())

    def test_icons_have_the_size_that_their_folder_tells(self):
        theme = self.prefix / "share" / "icons" / "hicolor"
        sizes = {path.parts[-3]: path.read_bytes()[16:24] for path in theme.glob(f"*/apps/{ID}.png")}
        self.assertLessEqual({"16x16", "32x32", "48x48", "128x128", "256x256", "512x512"}, set(sizes))
        for name, header in sizes.items():
            side = int(name.split("x")[0])
            self.assertEqual(header, side.to_bytes(4, "big") * 2, name)
        self.assertTrue((theme / "scalable" / "apps" / f"{ID}.svg").exists())
        self.assertTrue((theme / "symbolic" / "apps" / f"{ID}-symbolic.svg").exists())

    def test_the_manual_names_every_command_and_option(self):
        manual = (self.prefix / "share/man/man1/quillary.1").read_text()
        manual = re.sub(r"\\f[BRI]", "", manual).replace("\\", "").replace('"', "")
        manual = re.sub(r"\s+", " ", manual)

        def help_of(*words):
            return subprocess.run([self.prefix / "bin" / "quillary", *words, "--help"], stdout=subprocess.PIPE,
                                  text=True, check=True).stdout

        def walk(*words):
            text = help_of(*words)
            head, _, below = text.partition("Subcommands:")
            for option in re.findall(r"^  (?:-\w,)?(--[a-z-]+)", head, re.M):
                self.assertIn(option, manual, words)
            for command in re.findall(r"^  ([a-z]+)", below, re.M):
                self.assertRegex(manual, r"\b" + " ".join([*words, command]) + r"\b")
                walk(*words, command)
        walk()

    def test_completions_are_there(self):
        share = self.prefix / "share"
        for script in ("bash-completion/completions/quillary", "zsh/site-functions/_quillary",
                       "fish/vendor_completions.d/quillary.fish"):
            self.assertIn("recent", (share / script).read_text())


if __name__ == "__main__":
    missing = [tool for tool in ("desktop-file-validate", "appstreamcli", "update-mime-database")
               if not shutil.which(tool)]
    if missing:
        print(f"skipped: {', '.join(missing)} missing")
        sys.exit(77)
    unittest.main(argv=sys.argv[:1])
