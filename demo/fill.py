#!/usr/bin/python3
"""Adds customers, loans and pictures to the demo's fresh pair of data files, which contain its films already.

    fill.py DATA_FOLDER PICTURES_FOLDER
"""

import datetime
import os
import sqlite3
import sys

import films
import pictures

ALPHABET = " aábcčdďeéěfghiíjklmnňoópqrřsštťuúůvwxyýzž"
BLOCK = 100000  # the picture store's
WITH_COVER = 12  # so many films have a cover too, the first ones


def czech_key(name):
    # Enough for names that differ otherwise than in accents of vowels, which is checked below.
    return [ALPHABET.index(letter) for letter in name.lower() if letter in ALPHABET]


def czech(left, right):
    one, other = czech_key(left), czech_key(right)
    return (one > other) - (one < other)


def open_file(path):
    database = sqlite3.connect(path)
    # The order that the columns are declared with. Of what is written here, only names and the letters of picture
    # groups are in an index with that order.
    database.create_collation("CZECH", czech)
    return database


def moment(now, days, hour):
    day = (now - datetime.timedelta(days=days)).date()
    return f"{day.isoformat()} {hour:02}:{(days * 7) % 60:02}:00"


def add_customers(database):
    people = pictures.read_table("customers.csv")
    bare = [films.folded(person["USNAME"]) for person in people]
    assert len(set(bare)) == len(bare)
    numbers = {}
    for number, person in enumerate(people, 1):
        address = person["USADR"].replace("\n", "\r\n")
        database.execute(
            "INSERT INTO tUser (USID, USNAME, USADR, USPHONE, USMAIL, USPOZN, USREGNUM) VALUES (?,?,?,?,?,?,?)",
            (number, person["USNAME"], address, person["USPHONE"], person["USMAIL"], person["USPOZN"], str(number)),
        )
        numbers[person["USNAME"]] = number
    return numbers


def add_loans(database, customers, numbers, now):
    for loan in pictures.read_table("loans.csv"):
        back = moment(now, int(loan["returned"]), 17) if loan["returned"] else None
        database.execute(
            "INSERT INTO tPujcky (P_UID, P_DVDID, PDatPujcky, PDatVraceni) VALUES (?,?,?,?)",
            (customers[loan["customer"]], numbers[loan["film"]], moment(now, int(loan["lent"]), 18), back),
        )


def stored(content):
    """A picture's bytes as the store keeps them: one byte more for each piece that it is written in."""
    return content + bytes(len(content) // BLOCK + 1)


def add_picture(store, film, group, path):
    with open(path, "rb") as file:
        content = file.read()
    row = store.execute(
        "INSERT INTO tPicture (PicDVDID, PicSkup, PicTyp, PicSize, PicDat) VALUES (?,?,'jpg',?,?)",
        (film.number, group, len(content), stored(content)),
    )
    return row.lastrowid


def add_pictures(catalogue, store, library, gallery):
    for film in library:
        preview = add_picture(store, film, "N", gallery.poster(film))
        cover = add_picture(store, film, "O", gallery.cover(film)) if film.number <= WITH_COVER else 0
        catalogue.execute("UPDATE tDVD SET Obal_ID=?, Nahled_ID=? WHERE DVDID=?", (cover, preview, film.number))


def main():
    data, folder = sys.argv[1:]
    catalogue = open_file(os.path.join(data, "data.ddb"))
    store = open_file(os.path.join(data, "pictures.ddb"))
    library = films.catalogue()
    with catalogue, store:
        customers = add_customers(catalogue)
        numbers = {film.title: film.number for film in library}
        add_loans(catalogue, customers, numbers, datetime.datetime.now())
        add_pictures(catalogue, store, library, films.Gallery(folder))
    catalogue.close()
    store.close()


if __name__ == "__main__":
    main()
