"""Clears the two creation times in a help file, so that the same pages give the same file.

    helpTimes.py FILE.chm
"""

import pathlib
import re
import sys

HEADER = b"ITSF"
HEADER_TIME = 16  # place in the header
SYSTEM_TIME = re.compile(rb"(?<=\x03\x00\x00\x00\x0a\x00\x04\x00).{4}", re.S)  # the first entry of the file #SYSTEM


def main():
    path = pathlib.Path(sys.argv[1])
    content = path.read_bytes()
    content, found = SYSTEM_TIME.subn(bytes(4), content)
    if not content.startswith(HEADER) or found != 1:
        sys.exit(f"{path}: no help file, or one of another form")
    path.write_bytes(content[:HEADER_TIME] + bytes(4) + content[HEADER_TIME + 4:])


main()
