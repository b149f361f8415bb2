#!/usr/bin/env python3
"""The program in other languages: translations.py FOLDER SOURCE LUPDATE, where FOLDER holds the programs."""

import os
import re
import shutil
import subprocess
import sys
import tempfile
import unittest
import xml.etree.ElementTree as xml
from pathlib import Path

PROGRAM, SOURCE, LUPDATE = Path(sys.argv[1]) / "quillary", Path(sys.argv[2]), sys.argv[3]
FILES = sorted((SOURCE / "translations").glob("quillary_*.ts"))


def messages(file):
    """Yields the context, the text and its translations, of which there is none while it is unfinished."""
    for context in xml.parse(file).getroot().iter("context"):
        for message in context.iter("message"):
            translation = message.find("translation")
            forms = [form.text or "" for form in translation.iter("numerusform")] or [translation.text or ""]
            unfinished = translation.get("type") == "unfinished"
            yield context.findtext("name"), message.findtext("source"), [] if unfinished else forms


class Texts(unittest.TestCase):
    def test_translations_keep_what_is_filled_in(self):
        for file in FILES:
            for context, text, forms in messages(file):
                wanted = sorted(re.findall(r"%[1-9]", text))
                for form in forms:
                    with self.subTest(file=file.name, context=context, text=text):
                        self.assertTrue(form.strip())
                        self.assertEqual(sorted(re.findall(r"%[1-9]", form)), wanted)
                        self.assertLessEqual(form.count("%n"), text.count("%n"))

    def test_english_has_every_form_that_a_number_decides(self):
        with tempfile.TemporaryDirectory() as folder:
            file = shutil.copy(SOURCE / "translations" / "quillary_en.ts", folder)
            subprocess.run([LUPDATE, "-silent", "-no-obsolete", "-locations", "none", "-pluralonly", str(SOURCE / "src"),
                            "-ts", file], check=True, stderr=subprocess.DEVNULL)
            self.assertEqual([(context, text) for context, text, forms in messages(file) if not forms], [],
                             "run tools/translate and give translations/quillary_en.ts both forms")


class Program(unittest.TestCase):
    def setUp(self):
        self.folder = Path(self.enterContext(tempfile.TemporaryDirectory(prefix="quillary-language-")))
        self.environment = {"PATH": os.environ["PATH"], "HOME": str(self.folder), "LC_ALL": "C.UTF-8",
                            "QT_QPA_PLATFORM": "offscreen",
                            **{name: value for name, value in os.environ.items() if name.endswith("SAN_OPTIONS")},
                            **{f"XDG_{kind}_HOME": str(self.folder / kind.lower()) for kind in ("CONFIG", "CACHE", "DATA")}}

    def run_in(self, language, *arguments):
        return subprocess.run([PROGRAM, "--library", str(self.folder / "library"), *arguments], stdout=subprocess.PIPE,
                              stderr=subprocess.STDOUT, env={**self.environment, "LANGUAGE": language}, timeout=60)

    def picture(self, language, tab):
        file = self.folder / f"{language or 'none'}-{tab}.png"
        done = self.run_in(language, "panel", "--tab", tab, "--screenshot", str(file))
        self.assertEqual(done.returncode, 0, done.stdout.decode())
        return file.read_bytes()

    def test_the_panel_follows_the_desktop(self):
        for tab in ("import", "library"):
            english = self.picture("", tab)
            german = self.picture("de", tab)
            self.assertNotEqual(german, english)
            self.assertEqual(self.picture("de_AT:en", tab), german)
            self.assertEqual(self.picture("is", tab), english)

    def test_commands_speak_english(self):
        for arguments in (["--help"], ["save", str(self.folder / "missing.png")], ["list", "images"], ["settings"]):
            self.assertEqual(self.run_in("de", *arguments).stdout, self.run_in("", *arguments).stdout, arguments)


if __name__ == "__main__":
    unittest.main(argv=sys.argv[:1])
