#!/usr/bin/env python3
# SPDX-License-Identifier: Apache-2.0
"""Pages of Markdown with places that tools write: `<!-- NAME -->` begins one, `<!-- end of NAME -->` ends it.

  page.py PAGE NAME FILE     writes the text of a file into a place
"""
import pathlib
import re
import sys


def write_place(page: pathlib.Path, name: str, text: str) -> None:
    begin, end = f"<!-- {name} -->\n", f"<!-- end of {name} -->"
    before = page.read_text(encoding="utf-8")
    if begin not in before or end not in before:
        sys.exit(f"{page} has no place marked '{name}'")
    place = re.compile(re.escape(begin) + ".*?" + re.escape(end), flags=re.DOTALL)
    page.write_text(place.sub(lambda _: begin + "\n" + text + "\n\n" + end, before), encoding="utf-8")


if __name__ == "__main__":
    write_place(pathlib.Path(sys.argv[1]), sys.argv[2], pathlib.Path(sys.argv[3]).read_text(encoding="utf-8").strip())
