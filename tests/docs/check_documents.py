#!/usr/bin/env python3
# SPDX-License-Identifier: Apache-2.0
"""The documents must stay true: links lead somewhere, to a heading that is there, named files exist, and the road in
ARCHITECTURE.md tells the lengths of its files about right, and the files together stay readable in an hour (under 900 lines).
The tests that docs/user/promises.md names as proofs are there.

  check_documents.py ROOT
"""
import pathlib
import re
import sys

LINK = re.compile(r"\]\((?!https?:)([^)#\s]*)(?:#([^)]*))?\)")
NAMED_FILE = re.compile(r"`((?:include|interface|record|planner|dft|real|batch|threads|kernels|tests|bench|examples|docs|scripts|cmake)"
                        r"/[\w./-]*)`")
ROAD_ROW = re.compile(r"^\| \[?`([^`]+)`(?:\]\([^)]*\))? \| (?:about )?(\d+) \|")
LONGEST_ROAD = 900
PROMISES = "docs/user/promises.md"
PROMISE_ROW = re.compile(r"^\| (?!promise |---)(.+) \| (.+) \|$", re.MULTILINE)
GOOGLE_TEST = re.compile(r"^TEST(?:_F|_P)?\((\w+),\s*(\w+)\)", re.MULTILINE)


def documents(root: pathlib.Path) -> list[pathlib.Path]:
    return sorted(p for p in root.rglob("*.md") if "build" not in p.relative_to(root).parts[:1])


def headings(document: pathlib.Path) -> set[str]:
    """The names by which links reach the headings of a page."""
    titles = re.findall(r"^#+ (.*)$", document.read_text(), re.MULTILINE)
    return {re.sub(r"[^\w\- ]", "", title.lower()).replace(" ", "-") for title in titles}


def complaints(root: pathlib.Path) -> list[str]:
    found = []
    for document in documents(root):
        text = document.read_text()
        name = document.relative_to(root)
        for link, heading in LINK.findall(text):
            target = document.parent / link if link else document
            if not target.exists():
                found.append(f"{name}: the link {link} leads nowhere")
            elif heading and heading not in headings(target):
                found.append(f"{name}: {link} has no heading {heading}")
        found += [f"{name}: there is no {file}" for file in NAMED_FILE.findall(text) if not (root / file).exists()]
    return found + road_complaints(root) + promise_complaints(root)


def promise_complaints(root: pathlib.Path) -> list[str]:
    """Every promise has a test, and every test that is named exists: a GoogleTest case, or one that CMake adds."""
    cases = {f"{suite}.{case}" for file in root.glob("tests/**/*.cpp") for suite, case in GOOGLE_TEST.findall(file.read_text())}
    added = " ".join(file.read_text() for file in root.glob("tests/**/CMakeLists.txt"))
    rows = PROMISE_ROW.findall((root / PROMISES).read_text())
    found = [] if len(rows) > 20 else [f"{PROMISES}: only {len(rows)} promises were found"]
    for promise, proofs in rows:
        names = re.findall(r"`([^`]+)`", proofs)
        if not names:
            found.append(f"{PROMISES}: nothing proves: {promise}")
        for name in names:
            # A test of several forms is added under a name that CMake puts together.
            if name not in cases and not ("." not in name and re.search(rf"\b{name.removesuffix('_whole')}\b", added)):
                found.append(f"{PROMISES}: there is no test {name}")
    return found


def road_complaints(root: pathlib.Path) -> list[str]:
    found, total = [], 0
    for row in filter(None, map(ROAD_ROW.match, (root / "ARCHITECTURE.md").read_text().splitlines())):
        told = int(row[2])
        file = root / row[1]
        # What isn't there is made by the build, or its link is complained about already.
        lines = len(file.read_text().splitlines()) if file.exists() else told
        total += lines
        if abs(lines - told) > max(told // 10, 5):
            found.append(f"ARCHITECTURE.md: {row[1]} has {lines} lines, not {told}")
    if not 0 < total < LONGEST_ROAD:
        found.append(f"ARCHITECTURE.md: the road has {total} lines")
    return found


def main() -> int:
    found = complaints(pathlib.Path(sys.argv[1]))
    print("\n".join(found) or "ok")
    return 1 if found else 0


if __name__ == "__main__":
    sys.exit(main())
