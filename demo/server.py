#!/usr/bin/python3
"""Plays the web for the demo: a proxy on this machine alone that answers for five sites and for nothing else.

    server.py --pictures FOLDER --film-db ROOT --film-db2 ROOT --shop ROOT --covers ROOT --update ROOT

It prints the number of its port once it is ready. A root is scheme and host, such as http://films.example.
"""

import argparse
import html
import http.server
import re
import urllib.parse

import films

NEWER_VERSION = "1-0-24"
HTML_UTF8 = "text/html; charset=utf-8"
HTML_1250 = "text/html; charset=windows-1250"


def linked(names):
    return ", ".join(f'<a href="/osoba/{at}">{name}</a>' for at, name in enumerate(names, 1))


def names_of(text):
    return [name.strip() for name in text.split(",") if name.strip()]


class FilmDatabase:
    """Search pages, and of each film a plain page and, behind it, a full one."""

    def __init__(self, library, gallery, second):
        self.library, self.gallery, self.second = library, gallery, second

    def get(self, path, query):
        if path == "/hledani-filmu-hercu-reziseru-ve-filmove-databazi/":
            # The term is all that follows, "&" and "=" in it as they are; its letters are in Windows-1250.
            raw = query.split("search=", 1)[-1].replace("+", " ")
            return HTML_UTF8, self.search(urllib.parse.unquote_to_bytes(raw).decode("cp1250", "replace"))
        match = re.match(r"/film/(\d+)-", path, re.IGNORECASE)
        film = self.library.get(int(match[1])) if match else None
        if film:
            return HTML_UTF8, self.full(film) if query else self.plain(film)
        match = re.match(r"/posters/(\d+)\.jpg$", path, re.IGNORECASE)
        film = self.library.get(int(match[1])) if match else None
        return ("image/jpeg", self.gallery.poster(film)) if film else None

    def search(self, term):
        heading = "v českých názvech"
        result = films.found(self.library.values(), term, lambda film: film.title)
        if not result:
            heading = "v originálních názvech"
            result = films.found(self.library.values(), term, lambda film: film.original)
        links = "<br>\n".join(
            f'<a href="/film/{film.slug()}/">{html.escape(film.title, quote=False)}</a> ({film.row["Rok"]})'
            for film in result
        )
        table = f"<table><tr><td>{links}<br></td></tr></table>" if result else "<p>Nic nebylo nalezeno.</p>"
        return f"<html><head><title>Hledání</title></head><body><h3>Hledání {heading}</h3>\n{table}</body></html>"

    @staticmethod
    def plain(film):
        title = html.escape(film.title, quote=False)
        return f'<html><body><h2>{title}</h2><a href="?text={film.number}" class="vice">více</a></body></html>'

    def full(self, film):
        row = film.row
        title_style = "font-size: 18px;font-weight:bold;color: #000000;font-family: Tahoma;"
        # Country, year and length are told apart by commas, so countries are by slashes.
        origin = " / ".join(names_of(row["Stat"])) + f", {row['Rok']}, {row['Delka']} min"
        page = "<html><body>\n" + f"<h1 style='{title_style}display:inline'>\n  {film.title}</h1>"
        page += "<br>   <b>" + " / ".join(names_of(row["Zanr"])) + "&nbsp;<br>" + origin + "<br>"
        page += "<b>Režie:</b> " + linked([row["Rezie"]]) + "<br>"
        # A page without a link there would stop the program's reading; a blank one gives no actor.
        page += "<b>Hrají: </b>" + linked(names_of(row["Herci"]) or [" "]) + "<br>&nbsp;<br></td>"
        page += "<span class='komentar_font' style='text-align:justify;width:700px;'>"
        page += html.escape(row["Obsah"], quote=False) + "</span>"
        page += f'<a href="{self.second}/title/{film.code()}/combined">IMDb</a>'
        page += f"<img src='/posters/{film.number}.jpg' width='100'>"
        return page + "</body></html>"


class SecondFilmDatabase:
    """Original titles with their year."""

    def __init__(self, library):
        self.codes = {film.code(): film for film in library.values()}

    def get(self, path, _query):
        film = self.codes.get(path.rsplit("/", 1)[-1])
        if not path.startswith("/title/") or not film:
            return None
        title = html.escape(f"{film.original} ({film.row['Rok']})", quote=False)
        return HTML_UTF8, f"<html><head><title>{title}</title></head><body></body></html>"


class Shop:
    """A list of films that a form asks for, and a page of each."""

    def __init__(self, library, gallery):
        self.library, self.gallery = library, gallery

    def post(self, path, body):
        if path != "/seznam_video.php":
            return None
        fields = urllib.parse.parse_qs(body, encoding="iso-8859-2", keep_blank_values=True)
        # The program leaves this letter in Windows-1250; a browser sends what its page's alphabet lacks by number.
        term = html.unescape(fields.get("nazev", [""])[0]).replace("\x9d", "ť").replace("\x8d", "Ť")
        return HTML_UTF8, self.list(term)

    def get(self, path, query):
        if path == "/seznam_video.php":
            return HTML_UTF8, self.list("")
        number = re.search(r"\d+", query if path == "/zbozi_video.php" else path)
        film = self.library.get(int(number[0])) if number else None
        if film and path == "/zbozi_video.php":
            return HTML_UTF8, self.film(film)
        if film and path.startswith("/images/"):
            return "image/jpeg", self.gallery.poster(film)
        return None

    def list(self, term):
        links = "".join(
            f'<p><a class="zbozi" title="{html.escape(film.title)}" '
            f'href="zbozi_video.php?id_zbozi={film.number}&amp;x=1">{html.escape(film.title, quote=False)}</a></p>\n'
            for film in films.found(self.library.values(), term)
        )
        return f'<html><head><meta charset="utf-8"><title>Obchod</title></head><body>\n{links}</body></html>'

    @staticmethod
    def film(film):
        row = film.row

        def line(label, value, after=""):
            text = html.escape(value, quote=False) + after
            return f'<tr><td>{label}</td><td width="80%">{text}</td></tr>\n'

        page = '<html><head><meta charset="utf-8"></head><body>'
        page += f'<h2 class="title1">{html.escape(film.title, quote=False)}<a name="x">*</a></h2><table>'
        page += line("Žánr:", row["Zanr"]) + line("Originální název:", film.original)
        page += line("Režie:", row["Rezie"]) + line("Herci:", row["Herci"])
        page += line("Délka (min.):", row["Delka"], "&nbsp;") + line("Země původu:", row["Stat"], "&nbsp;")
        page += line("Rok výroby:", row["Rok"], "&nbsp;")
        page += '<tr><td>Popis:</td><td width="80%"><table><tr><td></td></tr></table>'
        page += html.escape(row["Obsah"], quote=False) + "</td></tr></table>"
        page += "<a href='javascript:open_wnd_photo(\"1\")'>" + f'<img src="/images/{film.number}.jpg"></a>'
        return page + "</body></html>"


class CoverArchive:
    """Covers: one for each film and, for foreign films, one more with the original title."""

    def __init__(self, library, gallery):
        self.library, self.gallery = library, gallery

    def get(self, path, query):
        if path == "/covers.php":
            raw = query.split("search=", 1)[-1]
            return HTML_1250, self.search(urllib.parse.unquote_to_bytes(raw).decode("cp1250", "replace"))
        match = re.match(r"DVDcover2=(\d+)(en)?$", query) if path == "/support.php" else None
        film = self.library.get(int(match[1])) if match else None
        return ("image/jpeg", self.gallery.cover(film, bool(match[2]))) if film else None

    def search(self, term):
        options = []
        for film in films.found(self.library.values(), term):
            # Two titles are parted by this reference, which ends without its semicolon here.
            label = f"{film.title}&nbsp({film.original})"
            options.append(f'<option value="{film.number}">{label}</option>')
            if film.foreign:
                options.append(f'<option value="{film.number}en">{label} [EN]</option>')
        chosen = "\n".join(options)
        return (
            "<html><head><title>Obaly</title></head><body><form>"
            f'<select name="dvd" align="center" size=25 onchange="show()">\n{chosen}</select></form></body></html>'
        )


class UpdateHost:
    """Offers a newer version and sends a stand-in for its installer."""

    def get(self, path, _query):
        if path == "/podpora/files/dvdkalver.asp":
            return "text/plain", NEWER_VERSION + "\r\n"
        if path == "/podpora/files/setupupgrade.exe":
            return "text/plain; charset=utf-8", "Zde by byl instalační program. Toto je jen ukázka.\r\n"
        return None


class Handler(http.server.BaseHTTPRequestHandler):
    sites = {}
    protocol_version = "HTTP/1.0"

    def answer(self, body=None):
        target = urllib.parse.urlsplit(self.path)
        root = f"{target.scheme}://{target.netloc}".lower()
        site = self.sites.get(root)
        reply = None
        if site and body is not None and hasattr(site, "post"):
            reply = site.post(target.path, body)
        elif site and body is None:
            reply = site.get(urllib.parse.unquote(target.path), target.query)
        if not reply:
            self.send_error(404)
            return
        kind, content = reply
        if kind.startswith("image/"):
            with open(content, "rb") as file:
                content = file.read()
        else:
            content = content.encode("cp1250" if "1250" in kind else "utf-8", "xmlcharrefreplace")
        self.send_response(200)
        self.send_header("Content-Type", kind)
        self.send_header("Content-Length", str(len(content)))
        self.end_headers()
        self.wfile.write(content)

    def do_GET(self):
        self.answer()

    def do_POST(self):
        length = int(self.headers.get("Content-Length") or 0)
        self.answer(self.rfile.read(min(length, 65536)).decode("ascii", "replace"))

    def log_message(self, *_):
        pass


class Server(http.server.ThreadingHTTPServer):
    def handle_error(self, *_):
        """The client has closed the connection."""


def main():
    parser = argparse.ArgumentParser()
    for name in ("pictures", "film-db", "film-db2", "shop", "covers", "update"):
        parser.add_argument("--" + name, required=True)
    roots = parser.parse_args()
    library = {film.number: film for film in films.everything()}
    gallery = films.Gallery(roots.pictures)
    Handler.sites = {
        roots.film_db.lower(): FilmDatabase(library, gallery, roots.film_db2),
        roots.film_db2.lower(): SecondFilmDatabase(library),
        roots.shop.lower(): Shop(library, gallery),
        roots.covers.lower(): CoverArchive(library, gallery),
        roots.update.lower(): UpdateHost(),
    }
    server = Server(("127.0.0.1", 0), Handler)
    print(server.server_port, flush=True)
    server.serve_forever()


if __name__ == "__main__":
    main()
