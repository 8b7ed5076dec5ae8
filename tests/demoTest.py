"""Checks the demo's films and web sites: demoTest.py SOURCE_FOLDER"""

import os
import re
import subprocess
import sys
import tempfile
import unittest
import urllib.error
import urllib.parse
import urllib.request

DEMO = os.path.join(sys.argv.pop(1), "demo")
sys.path.insert(0, DEMO)
sys.dont_write_bytecode = True

import films  # noqa: E402
import fill  # noqa: E402
import pictures  # noqa: E402

ROOTS = {
    "film-db": "http://films.example",
    "film-db2": "http://titles.example",
    "shop": "http://shop.example",
    "covers": "http://covers.example",
    "update": "http://update.example",
}


class Tables(unittest.TestCase):
    def test_films_have_all_that_the_sites_and_the_editor_show(self):
        self.assertGreaterEqual(len(films.catalogue()), 30)
        designs = {row["film"]: row["motif"] for row in pictures.read_table("designs.csv")}
        for film in films.everything():
            for column in ("CZJm", "PuvJm", "Zanr", "Obsah", "Stat", "Rezie", "Rok", "Delka"):
                self.assertTrue(film.row[column], film.title)
            for column, length in (("Nabidka", 5), ("JazykDetail", 9), ("Titulky", 7)):
                tokens = film.row[column].split("|")
                self.assertTrue(len(tokens) == length and set(tokens) <= {"A", "N"}, film.title)
            self.assertIn(designs[film.title], pictures.MOTIFS)
            film.title.encode("cp1250")
            film.original.encode("cp1250")

    def test_loans_are_of_films_and_customers_that_there_are(self):
        titles = {film.title for film in films.catalogue()}
        names = {person["USNAME"] for person in pictures.read_table("customers.csv")}
        loans = pictures.read_table("loans.csv")
        out = [loan["film"] for loan in loans if not loan["returned"]]
        self.assertEqual(len(out), len(set(out)))
        for loan in loans:
            self.assertIn(loan["film"], titles)
            self.assertIn(loan["customer"], names)
            self.assertGreater(int(loan["lent"]), int(loan["returned"] or 0))

    def test_customers_stand_in_czech_order(self):
        names = [person["USNAME"] for person in pictures.read_table("customers.csv")]
        self.assertEqual(sorted(names, key=fill.czech_key), names)

    def test_a_picture_is_followed_by_a_byte_for_each_piece(self):
        for length, whole in ((70000, 70001), (100000, 100002), (250000, 250003)):
            self.assertEqual(len(fill.stored(bytes(length))), whole)


class Sites(unittest.TestCase):
    @classmethod
    def setUpClass(cls):
        cls.folder = tempfile.TemporaryDirectory()
        command = [sys.executable, "-B", os.path.join(DEMO, "server.py"), "--pictures", cls.folder.name]
        for name, root in ROOTS.items():
            command += ["--" + name, root]
        cls.server = subprocess.Popen(command, stdout=subprocess.PIPE)
        proxy = {"http": f"http://127.0.0.1:{int(cls.server.stdout.readline())}"}
        cls.web = urllib.request.build_opener(urllib.request.ProxyHandler(proxy))

    @classmethod
    def tearDownClass(cls):
        cls.server.terminate()
        cls.server.wait()
        cls.server.stdout.close()
        cls.folder.cleanup()

    def get(self, site, target, data=None):
        with self.web.open(ROOTS[site] + target, data) as reply:
            content = reply.read()
            kind = reply.headers["Content-Type"]
        if kind.startswith("image/"):
            return content
        return content.decode("cp1250" if "1250" in kind else "utf-8")

    def find(self, term):
        words = urllib.parse.quote(term.encode("cp1250")).replace("%20", "+")
        return self.get("film-db", "/hledani-filmu-hercu-reziseru-ve-filmove-databazi/?search=" + words)

    def test_a_title_is_found_without_case_and_diacritics(self):
        for term in ("občan kane", "OBCAN", "kane Obcan"):
            page = self.find(term)
            self.assertIn("v českých názvech", page)
            self.assertIn("Občan Kane", page)
        self.assertIn("v originálních názvech", self.find("godfather"))
        self.assertNotIn("<a href", self.find("nic takového"))

    def test_a_film_leads_to_its_full_page_its_poster_and_its_original_title(self):
        for film in films.everything():
            page = self.get("film-db", f"/film/{film.slug().upper()}/?text={film.number}")
            for marker in ("display:inline'>", "<br>   <b>", "&nbsp;<br>", "<b>Režie:</b>", "<b>Hrají: </b>"):
                self.assertIn(marker, page)
            origin = page.split("&nbsp;<br>", 1)[1].split("<", 1)[0]
            self.assertEqual(len(origin.split(",")), 3, film.title)
            cast = re.findall(">([^<]*)</a>", page.split("<b>Hrají: </b>", 1)[1].split("<br>&nbsp;<br></td>", 1)[0])
            self.assertEqual(", ".join(cast), film.row["Herci"] or " ", film.title)
            self.assertIn(f"{film.original} (", self.get("film-db2", "/title/" + film.code()).replace("&amp;", "&"))
        self.assertIn(f'"?text={film.number}" ', self.get("film-db", f"/film/{film.slug()}/"))
        self.assertEqual(self.get("film-db", f"/posters/{film.number}.jpg")[:2], b"\xff\xd8")

    def test_the_shop_reads_its_own_alphabet(self):
        self.assertIn(">Šakalí léta</a>", self.get("shop", "/seznam_video.php", b"nazev=%A9akal%ED"))
        # A letter that the program leaves in its own code page, and one sent by number.
        self.assertIn("Jáchyme", self.get("shop", "/seznam_video.php", b"nazev=ho%EF"))
        self.assertNotIn("<a ", self.get("shop", "/seznam_video.php", b"nazev=%9D%9D"))
        self.assertIn("Casablanca", self.get("shop", "/seznam_video.php", b"nazev=%26%2399%3Basablanca"))
        page = self.get("shop", "/zbozi_video.php?id_zbozi=21")
        self.assertIn("<h2 class=\"title1\">Casablanca<a", page)
        self.assertIn('src="/images/21.jpg"', page)

    def test_the_archive_has_a_foreign_cover_of_foreign_films_alone(self):
        page = self.get("covers", "/covers.php?search=p%E1n%20prsten%F9")
        self.assertIn('<select name="dvd" align="center" size=25', page)
        self.assertIn("[EN]</option>", page)
        self.assertNotIn("[EN]", self.get("covers", "/covers.php?search=kolja"))
        self.assertEqual(self.get("covers", "/support.php?DVDcover2=29en")[:2], b"\xff\xd8")

    def test_nothing_else_is_answered(self):
        for address in ("http://elsewhere.example/", ROOTS["film-db"] + "/film/999-x/", ROOTS["shop"] + "/images/../x"):
            with self.assertRaises(urllib.error.HTTPError) as failure:
                self.web.open(address)
            self.assertEqual(failure.exception.code, 404)
            failure.exception.close()


if __name__ == "__main__":
    unittest.main()
