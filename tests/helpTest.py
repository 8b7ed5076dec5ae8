"""Checks the help: helpTest.py SOURCE_FOLDER COMPILED_FILE"""

import glob
import html
import os
import re
import struct
import sys
import unittest

SOURCE, COMPILED = sys.argv.pop(1), sys.argv.pop(1)
HELP = os.path.join(SOURCE, "data", "help")


def read(path, encoding="utf-8"):
    with open(path, encoding=encoding) as file:
        return file.read()


def page_names():
    return sorted(os.path.basename(path) for path in glob.glob(os.path.join(HELP, "*.html")))


def locals_in(name):
    return re.findall(r'name="Local" value="([^"]+)"', read(os.path.join(HELP, name)))


class Pages(unittest.TestCase):
    def test_every_page_is_compiled_and_stands_once_in_the_contents(self):
        project = read(os.path.join(HELP, "napoveda.hhp")).split("[FILES]")[1].split()
        self.assertEqual(sorted(name for name in project if name.endswith(".html")), page_names())
        headings = {"prvni-film.html", "hlavni-okno.html", "pujceni.html", "tisk.html", "stehovani.html", "potize.html"}
        contents = locals_in("napoveda.hhc")
        for name in page_names():
            # The first page of a chapter stands under the chapter's name too.
            self.assertEqual(contents.count(name), 2 if name in headings else 1, name)

    def test_links_and_pictures_lead_somewhere(self):
        for name in page_names():
            for target in re.findall(r'(?:href|src)="([^"]+)"', read(os.path.join(HELP, name))):
                self.assertTrue(os.path.exists(os.path.join(HELP, target)), f"{name}: {target}")
        for target in locals_in("napoveda.hhk"):
            self.assertIn(target, page_names())

    def test_all_texts_can_be_written_in_the_code_page_of_the_file(self):
        for name in page_names() + ["napoveda.hhc", "napoveda.hhk", "napoveda.hhp", "napoveda.css"]:
            read(os.path.join(HELP, name)).encode("cp1250")

    def test_what_is_quoted_from_the_windows_stands_in_them(self):
        paths = glob.glob(os.path.join(SOURCE, "src", "**", "*"), recursive=True)
        program = "".join(read(path) for path in paths if path.endswith((".ui", ".cpp", ".h")))
        program = html.unescape(program).replace("&", "")
        for name in page_names():
            for quoted in re.findall(r"<b>(.*?)</b>", read(os.path.join(HELP, name))):
                self.assertTrue(html.unescape(quoted) in program, f"{name}: {quoted}")


class CompiledFile(unittest.TestCase):
    @classmethod
    def setUpClass(cls):
        with open(COMPILED, "rb") as file:
            cls.bytes = file.read()

    def test_it_says_that_it_is_czech_and_what_it_is_called(self):
        start = self.bytes.index(b"HHA Version")
        language = struct.pack("<HHI", 4, 36, 0x405)
        self.assertIn(language, self.bytes[start : start + 200])
        self.assertTrue("Brem DVD Kalvéra - nápověda\0".encode("cp1250") in self.bytes)
        self.assertTrue(b"uvod.html\0" in self.bytes)

    def test_it_holds_every_page_and_picture(self):
        pictures = [os.path.basename(path) for path in glob.glob(os.path.join(HELP, "*.png"))]
        for name in page_names() + pictures + ["napoveda.hhc", "napoveda.hhk", "napoveda.css"]:
            self.assertTrue(b"/" + name.encode() in self.bytes, name)

    def test_pages_are_compiled_in_the_code_page_that_they_name(self):
        folder = os.path.dirname(COMPILED)
        for name in page_names() + ["napoveda.hhc", "napoveda.hhk"]:
            text = read(os.path.join(folder, name), "cp1250")
            self.assertIn("charset=windows-1250", text)
            if name.endswith(".html"):
                title = re.search("<title>(.*)</title>", read(os.path.join(HELP, name)))[0]
                self.assertIn(title, text)


if __name__ == "__main__":
    unittest.main()
