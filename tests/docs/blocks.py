# SPDX-License-Identifier: Apache-2.0
"""The fenced code blocks of a Markdown page, each with what the page says about it.

A comment directly ahead of a block tells how to run what can't run as it stands:

  <!-- with: TEXT -->      declarations that come before a fragment
  <!-- peer: LIBRARY -->   a program on another library, compiled for this host with -lLIBRARY
  <!-- not run: REASON --> a block that no test can run, and why
"""
import dataclasses
import pathlib
import re

FENCE = re.compile(r"^( *)```(\S*)\s*$")
REMARK = re.compile(r"<!--\s*(with|peer|not run):[ \n]??((?:(?!-->).)*?)\s*-->\s*\Z", re.DOTALL)


@dataclasses.dataclass
class Block:
    page: pathlib.Path
    line: int
    language: str
    text: str
    remarks: dict[str, str]
    prints: str | None = None  # the next block of language "text" under the same heading

    @property
    def is_program(self) -> bool:
        return bool(re.search(r"\bint main\(|^\s*program \w+", self.text, re.MULTILINE))

    def __str__(self) -> str:
        return f"{self.page}:{self.line} ({self.language})"


def remarks_before(text: str) -> dict[str, str]:
    found = {}
    while match := REMARK.search(text):
        found[match[1]] = match[2].lstrip("\n") if "\n" in match[2] else match[2].strip()
        text = text[: match.start()].rstrip()
    return found


def blocks_of(page: pathlib.Path, text: str) -> list[Block]:
    found, lines, waiting = [], text.splitlines(), []
    before_start, number = 0, 0
    while number < len(lines):
        opening = FENCE.match(lines[number])
        if not opening:
            if lines[number].startswith("#"):
                waiting = []
            number += 1
            continue
        closing = next((k for k in range(number + 1, len(lines)) if lines[k].strip() == "```"), None)
        if closing is None:
            raise SystemExit(f"{page}:{number + 1}: this code block has no end")
        indent = len(opening[1])
        body = "\n".join(line[indent:] for line in lines[number + 1 : closing]) + "\n"
        block = Block(page, number + 1, opening[2], body, remarks_before("\n".join(lines[before_start:number])))
        if block.language == "text":
            for program in waiting:
                program.prints = body
            waiting = []
        elif block.language in ("c", "cpp", "fortran", "python", "matlab"):
            waiting.append(block)
        found.append(block)
        number = before_start = closing + 1
    return found
