"""Draws covers and posters of films: plain graphic designs of our own, made with ImageMagick."""

import csv
import math
import os
import random
import subprocess

HERE = os.path.dirname(os.path.abspath(__file__))
POSTER = (300, 450)
COVER = (1100, 740)  # in the proportions of a printed one: 27.5 by 18.5 cm
SPINE = 56
SERIF = "Liberation-Serif-Bold"
SANS = "Liberation-Sans"


def read_table(name):
    with open(os.path.join(HERE, name), encoding="utf-8", newline="") as file:
        return list(csv.DictReader(file))


class Design:
    """A film's motif and its three colours."""

    table = None

    def __init__(self, title):
        if Design.table is None:
            Design.table = {row["film"]: row for row in read_table("designs.csv")}
        row = Design.table.get(title, {})
        self.motif = row.get("motif", "rings")
        self.sky = row.get("sky", "#46607e")
        self.ground = row.get("ground", "#1f2c3c")
        self.light = row.get("light", "#f5ead0")
        self.chance = random.Random(title)  # the same picture each time


def circle(x, y, radius):
    return f"circle {x:.1f},{y:.1f} {x + radius:.1f},{y:.1f}"


def polygon(points):
    return "polygon " + " ".join(f"{x:.1f},{y:.1f}" for x, y in points)


def fill(colour, opacity=1.0):
    return f"stroke none fill {colour} fill-opacity {opacity:.2f}"


def stroke(colour, width, opacity=1.0):
    return f"fill none fill-opacity 0 stroke {colour} stroke-opacity {opacity:.2f} stroke-width {width:.1f}"


def hill(width, top, bottom, swell, phase):
    points = [(0, bottom)]
    points += [(x, top + swell * math.sin(phase + x / width * 5)) for x in range(0, width + 10, 10)]
    return polygon(points + [(width, bottom)])


def sun(w, h, d):
    yield fill(d.light)
    yield circle(w * 0.5, h * 0.44, w * 0.27)
    for step, opacity in enumerate((0.55, 0.75, 1.0)):
        yield fill(d.ground, opacity)
        yield hill(w, h * (0.56 + 0.06 * step), h, h * 0.018, step * 2.2)


def hills(w, h, d):
    yield fill(d.light)
    yield circle(w * 0.74, h * 0.2, w * 0.1)
    for step, opacity in enumerate((0.4, 0.65, 1.0)):
        yield fill(d.ground, opacity)
        yield hill(w, h * (0.4 + 0.11 * step), h, h * 0.045, 1 + step * 1.9)
    yield fill(d.light, 0.9)
    yield polygon([(w * 0.46, h), (w * 0.56, h * 0.66), (w * 0.585, h * 0.66), (w * 0.62, h)])


def rails(w, h, d):
    yield fill(d.ground)
    yield f"rectangle 0,{h * 0.42:.1f} {w},{h}"
    yield fill(d.light)
    yield circle(w * 0.5, h * 0.42, w * 0.12)
    yield fill(d.ground)
    yield f"rectangle 0,{h * 0.42:.1f} {w},{h * 0.56:.1f}"
    for step in range(12):
        depth = (step / 11) ** 2.2
        y = h * (0.43 + 0.55 * depth)
        half = w * (0.03 + 0.5 * depth)
        yield stroke(d.light, 1 + 7 * depth, 0.55)
        yield f"line {w / 2 - half:.1f},{y:.1f} {w / 2 + half:.1f},{y:.1f}"
    yield stroke(d.light, 4)
    yield f"line {w * 0.49:.1f},{h * 0.43:.1f} {w * 0.12:.1f},{h} line {w * 0.51:.1f},{h * 0.43:.1f} {w * 0.88:.1f},{h}"


def stripes(w, h, d):
    for step in range(-2, 14):
        yield fill(d.ground, 0.9 if step % 2 else 0.35)
        x = step * w / 7
        yield polygon([(x, 0), (x + w / 14, 0), (x + w / 14 - w * 0.5, h), (x - w * 0.5, h)])
    yield fill(d.light)
    yield circle(w * 0.5, h * 0.36, w * 0.24)
    yield fill(d.sky)
    yield circle(w * 0.5, h * 0.36, w * 0.17)
    yield fill(d.ground)
    yield circle(w * 0.5, h * 0.36, w * 0.06)


def flame(w, h, d):
    for size, colour, opacity in ((1.0, d.ground, 1.0), (0.7, d.light, 0.75), (0.4, "#ffffff", 0.85)):
        x, y, r = w * 0.5, h * 0.5, w * 0.3 * size
        yield fill(colour, opacity)
        yield (
            f"path 'M {x:.1f},{y - r * 1.7:.1f} C {x + r * 0.2:.1f},{y - r * 0.8:.1f} {x + r * 1.1:.1f},{y - r * 0.5:.1f} "
            f"{x + r:.1f},{y + r * 0.4:.1f} C {x + r * 0.9:.1f},{y + r * 1.2:.1f} {x - r * 0.9:.1f},{y + r * 1.2:.1f} "
            f"{x - r:.1f},{y + r * 0.4:.1f} C {x - r * 1.05:.1f},{y - r * 0.2:.1f} {x - r * 0.3:.1f},{y - r * 0.5:.1f} "
            f"{x:.1f},{y - r * 1.7:.1f} Z'"
        )


def petals(w, h, d):
    x, y = w * 0.5, h * 0.38
    for ring, count, far, size, opacity in ((0, 10, 0.26, 0.15, 0.55), (1, 8, 0.16, 0.12, 0.85)):
        for step in range(count):
            angle = 2 * math.pi * step / count + ring * 0.4
            yield fill(d.ground if ring == 0 else d.light, opacity)
            yield circle(x + math.cos(angle) * w * far, y + math.sin(angle) * w * far, w * size)
    yield fill(d.sky)
    yield circle(x, y, w * 0.1)
    yield fill(d.light)
    yield circle(x, y, w * 0.055)


def snow(w, h, d):
    yield fill(d.ground)
    yield hill(w, h * 0.6, h, h * 0.03, 0.6)
    for step, x in enumerate((0.16, 0.33, 0.5, 0.68, 0.86)):
        base, tall = h * (0.66 + 0.02 * (step % 2)), h * (0.26 + 0.07 * (step % 3))
        yield fill("#1d3040", 0.8)
        yield polygon([(w * x, base - tall), (w * x + w * 0.075, base), (w * x - w * 0.075, base)])
    for _ in range(70):
        yield fill(d.light, d.chance.uniform(0.5, 1))
        yield circle(d.chance.uniform(0, w), d.chance.uniform(0, h * 0.72), d.chance.uniform(1, w * 0.012))


def window(w, h, d):
    for column in range(3):
        for row in range(4):
            lit = (column + row * 2) % 5 == 1 or (column, row) == (1, 1)
            x, y = w * (0.16 + 0.25 * column), h * (0.08 + 0.14 * row)
            yield fill(d.light if lit else d.ground, 1.0)
            yield f"roundrectangle {x:.1f},{y:.1f} {x + w * 0.18:.1f},{y + h * 0.1:.1f} 3,3"
            yield stroke(d.sky, 2.5)
            yield f"line {x + w * 0.09:.1f},{y:.1f} {x + w * 0.09:.1f},{y + h * 0.1:.1f} line {x:.1f},{y + h * 0.04:.1f} {x + w * 0.18:.1f},{y + h * 0.04:.1f}"


def staff(w, h, d):
    yield fill(d.ground, 0.9)
    yield hill(w, h * 0.62, h, h * 0.02, 0)
    for line in range(5):
        y = h * (0.24 + 0.045 * line)
        yield stroke(d.light, 2, 0.8)
        yield f"path 'M 0,{y:.1f} C {w * 0.3:.1f},{y - h * 0.06:.1f} {w * 0.7:.1f},{y + h * 0.06:.1f} {w},{y:.1f}'"
    for x, y in ((0.18, 0.36), (0.34, 0.27), (0.52, 0.33), (0.7, 0.41), (0.84, 0.29)):
        yield stroke(d.light, 3)
        yield f"line {w * x + w * 0.04:.1f},{h * y:.1f} {w * x + w * 0.04:.1f},{h * y - h * 0.13:.1f}"
        yield fill(d.light)
        yield f"ellipse {w * x:.1f},{h * y:.1f} {w * 0.045:.1f},{w * 0.034:.1f} 0,360"


def star(w, h, d):
    def points(x, y, far, near, count=5):
        for step in range(count * 2):
            radius = far if step % 2 == 0 else near
            angle = -math.pi / 2 + math.pi * step / count
            yield (x + math.cos(angle) * radius, y + math.sin(angle) * radius)

    for size, colour in ((0.42, d.ground), (0.34, d.light), (0.24, d.ground), (0.15, d.light)):
        yield fill(colour)
        yield polygon(points(w * 0.5, h * 0.37, w * size, w * size * 0.45))


def rings(w, h, d):
    for step in range(9, 0, -1):
        yield fill(d.ground if step % 2 else d.sky)
        yield circle(w * 0.5, h * 0.38, w * 0.055 * step)
    yield fill(d.light)
    yield f"ellipse {w * 0.5:.1f},{h * 0.38:.1f} {w * 0.028:.1f},{w * 0.075:.1f} 0,360"


def waves(w, h, d):
    yield fill(d.light)
    yield circle(w * 0.5, h * 0.3, w * 0.17)
    for step in range(6):
        yield fill(d.ground if step % 2 == 0 else d.sky, 0.92)
        yield hill(w, h * (0.42 + 0.065 * step), h, h * 0.022, step * 1.4)


def rays(w, h, d):
    x, y = w * 0.5, h * 0.4
    for step in range(14):
        angle = 2 * math.pi * step / 14
        far = h
        yield fill(d.ground)
        yield polygon([(x, y)] + [(x + math.cos(angle + o) * far, y + math.sin(angle + o) * far) for o in (-0.11, 0.11)])
    yield fill(d.sky)
    yield circle(x, y, w * 0.27)
    yield fill(d.light)
    yield circle(x, y, w * 0.22)


def moon(w, h, d):
    for _ in range(60):
        yield fill(d.light, d.chance.uniform(0.3, 0.95))
        yield circle(d.chance.uniform(0, w), d.chance.uniform(0, h * 0.66), d.chance.uniform(0.6, 2.0))
    yield fill(d.light)
    yield circle(w * 0.5, h * 0.34, w * 0.24)
    yield fill(d.sky, 0.35)
    yield circle(w * 0.43, h * 0.31, w * 0.05)
    yield circle(w * 0.57, h * 0.38, w * 0.035)
    yield circle(w * 0.52, h * 0.27, w * 0.022)
    yield fill(d.ground)
    yield hill(w, h * 0.66, h, h * 0.012, 2)


def city(w, h, d):
    yield fill(d.light)
    yield circle(w * 0.68, h * 0.22, w * 0.11)
    x = 0.0
    while x < w:
        wide = d.chance.uniform(w * 0.09, w * 0.17)
        top = h * d.chance.uniform(0.24, 0.5)
        yield fill(d.ground)
        yield f"rectangle {x:.1f},{top:.1f} {x + wide:.1f},{h}"
        for row in range(int((h * 0.68 - top) / 15)):
            for column in range(int(wide / 11)):
                if d.chance.random() < 0.4:
                    left, up = x + 5 + column * 11, top + 9 + row * 15
                    yield fill(d.light, d.chance.uniform(0.5, 1))
                    yield f"rectangle {left:.1f},{up:.1f} {left + 4:.1f},{up + 7:.1f}"
        x += wide + 2


def rain(w, h, d):
    for column in range(24):
        x = w * (column + 0.5) / 24
        y = d.chance.uniform(-h * 0.3, h * 0.1)
        while y < h * 0.72:
            length = d.chance.uniform(h * 0.03, h * 0.12)
            yield stroke(d.light, 2.4, d.chance.uniform(0.15, 0.95))
            yield f"line {x:.1f},{max(0, y):.1f} {x:.1f},{y + length:.1f}"
            y += length + d.chance.uniform(6, 26)
    yield fill(d.ground)
    yield circle(w * 0.5, h * 0.37, w * 0.22)
    yield stroke(d.light, 3)
    yield circle(w * 0.5, h * 0.37, w * 0.22)


def ring(w, h, d):
    yield fill(d.ground)
    yield polygon([(0, h), (0, h * 0.6), (w * 0.22, h * 0.42), (w * 0.4, h * 0.57), (w * 0.66, h * 0.36), (w, h * 0.62), (w, h)])
    yield stroke(d.light, w * 0.05)
    yield f"ellipse {w * 0.5:.1f},{h * 0.36:.1f} {w * 0.27:.1f},{w * 0.27:.1f} 0,360"
    yield stroke("#ffffff", w * 0.012, 0.7)
    yield f"ellipse {w * 0.5:.1f},{h * 0.36:.1f} {w * 0.285:.1f},{w * 0.285:.1f} 200,285"


MOTIFS = {
    f.__name__: f
    for f in (sun, hills, rails, stripes, flame, petals, snow, window, staff, star, rings, waves, rays, moon, city, rain, ring)
}


def dark(colour):
    red, green, blue = (int(colour[at : at + 2], 16) for at in (1, 3, 5))
    return 0.299 * red + 0.587 * green + 0.114 * blue < 140


def caption(text, width, height, colour, font, gravity="center", size=None):
    text = text.replace("\\", "\\\\").replace("%", "%%")
    return (
        ["(", "-background", "none", "-fill", colour, "-font", font, "-gravity", gravity, "-size", f"{width}x{height}"]
        + (["-pointsize", str(size)] if size else [])
        + ["caption:" + text, ")"]
    )


def at(x, y):
    return ["-gravity", "NorthWest", "-geometry", f"+{x}+{y}", "-composite"]


def front(film, title, width, height):
    """The arguments of a command that draws a front with its title."""
    design = Design(film["CZJm"])
    drawing = " ".join(MOTIFS[design.motif](width, height, design))
    band = int(height * 0.72)
    words = ["(", "-size", f"{width}x{height}", f"gradient:{design.sky}-{design.sky}", "-draw", drawing]
    words += ["-fill", design.ground, "-draw", f"stroke none rectangle 0,{band} {width},{height}"]
    words += ["-fill", design.light, "-draw", f"rectangle 0,{band} {width},{band + 2}"]
    ink = "#fffaf0" if dark(design.ground) else "#1f1a17"
    margin = int(width * 0.07)
    words += caption(title, width - 2 * margin, int(height * 0.16), ink, SERIF) + at(margin, int(height * 0.745))
    below = film["Rezie"] + "  ·  " + film["Rok"]
    words += caption(below, width - 2 * margin, int(height * 0.04), ink, SANS) + at(margin, int(height * 0.93))
    return words + ["+repage", ")"]


def draw(words, path):
    part = path + ".part"
    subprocess.run(["convert"] + words + ["-strip", "-quality", "88", "jpeg:" + part], check=True)
    os.replace(part, path)


def poster(film, path):
    """The preview picture of a film."""
    draw(front(film, film["CZJm"], *POSTER), path)


def cover(film, title, path):
    """A whole cover: back, spine and front, with a title in the language wanted."""
    width, height = COVER
    side = (width - SPINE) // 2
    design = Design(film["CZJm"])
    ink = "#fffaf0" if dark(design.ground) else "#1f1a17"
    words = ["-size", f"{width}x{height}", "xc:" + design.ground]
    words += front(film, title, side, height) + at(width - side, 0)
    words += ["-fill", design.sky, "-draw", f"stroke none rectangle {side},0 {side + SPINE},{height}"]
    spine_ink = "#fffaf0" if dark(design.sky) else "#1f1a17"
    spine = caption(title, height - 160, SPINE - 22, spine_ink, SERIF)
    words += spine[:-1] + ["-rotate", "90", "+repage", ")"] + at(side + 11, 80)
    words += caption(title, side - 120, 110, design.light if dark(design.ground) else ink, SERIF, "West") + at(60, 60)
    words += ["-fill", design.light, "-draw", f"rectangle 60,186 {side - 60},188"]
    words += caption(film["Obsah"], side - 120, 190, ink, SANS, "NorthWest", 22) + at(60, 214)
    facts = [film["Stat"] + ", " + film["Rok"] + ", " + film["Delka"] + " min", "Režie: " + film["Rezie"]]
    if film["Herci"]:
        facts.append("Hrají: " + film["Herci"])
    words += caption("\n".join(facts), side - 120, 200, ink, SANS, "SouthWest", 18) + at(60, height - 260)
    draw(words, path)
