"""Writes the changelog of the Debian package from CHANGELOG.md.

    debianChangelog.py CHANGELOG.md OUT MAINTAINER

Each heading "## VERSION - DATE" becomes an entry and each of its points a change. What is not released yet is left
out.
"""

import datetime
import pathlib
import re
import sys
import textwrap

RELEASE = re.compile(r"## (\d+(?:\.\d+)+) - (\d{4}-\d\d-\d\d)")
LINK = re.compile(r"\[([^]]*)\]\([^)]*\)")


def points(lines):
    """The points and paragraphs of a section, those below a heading with its word in front."""
    heading = ""
    found = []
    for line in lines:
        if line.startswith("### "):
            heading = line[4:] + ": "
        elif line.startswith("- "):
            found.append(heading + line[2:])
        elif line.startswith("  ") and found:
            found[-1] += " " + line.strip()
        elif line.strip():
            found.append(line.strip())
    return [LINK.sub(r"\1", point) for point in found]


def entry(version, date, lines, maintainer):
    day = datetime.datetime.fromisoformat(date + "T12:00:00+00:00")
    changes = "".join(textwrap.fill(point, 78, initial_indent="  * ", subsequent_indent="    ",
                                    break_on_hyphens=False) + "\n" for point in points(lines))
    moment = day.strftime("%a, %d %b %Y %H:%M:%S +0000")
    return f"kalvera ({version}) stable; urgency=medium\n\n{changes}\n -- {maintainer}  {moment}\n"


def main():
    source, out, maintainer = sys.argv[1:]
    sections = re.split(r"^(?=## )", pathlib.Path(source).read_text("utf-8"), flags=re.M)[1:]
    entries = []
    for section in sections:
        heading, *lines = section.splitlines()
        if match := RELEASE.fullmatch(heading):
            entries.append(entry(match[1], match[2], lines, maintainer))
    if not entries:
        sys.exit(f'{source} has no heading "## VERSION - DATE"')
    pathlib.Path(out).write_text("\n".join(entries), "utf-8")


main()
