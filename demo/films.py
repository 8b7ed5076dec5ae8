"""The films that the demo knows: those in its catalogue and some more, found on its web sites only."""

import os
import threading
import unicodedata

import pictures


class Film:
    def __init__(self, number, row):
        self.number = number  # on all web sites, and in the catalogue
        self.row = row
        self.title = row["CZJm"]
        self.original = row["PuvJm"]

    @property
    def foreign(self):
        return self.original != self.title

    def slug(self):
        words = "".join(letter if letter.isalnum() else " " for letter in folded(self.title)).split()
        return f"{self.number}-" + "-".join(words)

    def code(self):
        """Under which the second film database knows it."""
        return f"tt{9000000 + self.number}"


def folded(text):
    """Without letter case and diacritics."""
    parts = unicodedata.normalize("NFD", text.casefold())
    return "".join(letter for letter in parts if not unicodedata.combining(letter))


def catalogue():
    return [Film(at, row) for at, row in enumerate(pictures.read_table("films.csv"), 1)]


def everything():
    own = catalogue()
    return own + [Film(at, row) for at, row in enumerate(pictures.read_table("more-films.csv"), len(own) + 1)]


def found(films, term, title=lambda film: film.title + "\n" + film.original):
    """Films with all the words of a term in their title."""
    words = folded(term).split()
    return [film for film in films if all(word in folded(title(film)) for word in words)]


class Gallery:
    """Pictures of films in a folder, each drawn when it is first asked for."""

    def __init__(self, folder):
        self.folder = folder
        self.drawing = threading.Lock()
        os.makedirs(folder, exist_ok=True)

    def _path(self, name, draw):
        path = os.path.join(self.folder, name)
        with self.drawing:
            if not os.path.exists(path):
                draw(path)
        return path

    def poster(self, film):
        return self._path(f"poster-{film.number}.jpg", lambda path: pictures.poster(film.row, path))

    def cover(self, film, foreign=False):
        title = film.original if foreign else film.title
        name = f"cover-{film.number}{'-en' if foreign else ''}.jpg"
        return self._path(name, lambda path: pictures.cover(film.row, title, path))
