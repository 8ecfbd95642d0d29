#!/usr/bin/env python3
# SPDX-License-Identifier: Apache-2.0
"""Draws the pictures of docs/user/layouts.md: cells of memory as boxes, in the order of their addresses.

  layouts.py DIRECTORY
"""
import pathlib
import sys

SIDE, GAP, LEFT, TOP = 46, 26, 110, 14
COLOURS = {"a": "#cfe5ee", "b": "#f8dfb8", "c": "#d5e8c9", "d": "#e6d3ea", "-": "#f3f3f3", "s": "#cfe5ee", "i": "#f8dfb8"}


class Picture:
    def __init__(self, columns: int):
        self.parts, self.y, self.width = [], TOP, LEFT + columns * SIDE + 20

    def text(self, x: float, y: float, words: str, more: str = "") -> None:
        self.parts.append(f'<text x="{x}" y="{y}" {more}>{words}</text>')

    def row(self, label: str, cells: list[tuple[str, str]], offset: int = 0, wide: int = 1) -> None:
        """A row of boxes: a colour's letter and a text for each, `wide` cells for one box."""
        self.text(LEFT - 12, self.y + SIDE * 0.45, label, 'text-anchor="end"')
        for k, (colour, words) in enumerate(cells):
            x, width = LEFT + (offset + k * wide) * SIDE, SIDE * wide
            dashes = ' stroke-dasharray="3 3"' if colour == "-" else ""
            self.parts.append(f'<rect x="{x}" y="{self.y}" width="{width}" height="{SIDE * 0.7}" '
                              f'fill="{COLOURS[colour]}" stroke="#456"{dashes}/>')
            self.text(x + width / 2, self.y + SIDE * 0.45, words, 'text-anchor="middle"')
        self.y += SIDE * 0.7 + 4

    def arrow(self, first: float, last: float, words: str) -> None:
        y = self.y + 9
        a, b = LEFT + first * SIDE, LEFT + last * SIDE
        self.parts.append(f'<path d="M{a} {y - 6}V{y + 6}M{a} {y}H{b}M{b} {y - 6}V{y + 6}" stroke="#a33" fill="none"/>')
        self.text(b + 8, y + 5, words, 'fill="#a33"')
        self.y += 22

    def space(self) -> None:
        self.y += GAP

    def write(self, file: pathlib.Path) -> None:
        body = "\n".join(self.parts)
        file.write_text(f'<svg xmlns="http://www.w3.org/2000/svg" width="{self.width}" height="{self.y + 6:.0f}" '
                        f'font-family="sans-serif" font-size="14">\n<rect width="100%" height="100%" fill="white"/>\n'
                        f"{body}\n</svg>\n")


def rows(colour: str, row: int, columns: int) -> list[tuple[str, str]]:
    return [(colour, f"{row},{k}") for k in range(columns)]


def padding() -> Picture:
    p = Picture(11)
    for r in range(3):
        p.row("3 x 8 floats" if r == 0 else "", rows("abc"[r], r, 8))
    p.space()
    for r in range(3):
        p.row("in place" if r == 0 else "", rows("abc"[r], r, 8) + [("-", ""), ("-", "")])
    p.arrow(0, 10, "")
    p.text(LEFT, p.y + 4, "2 (n1 / 2 + 1) = 10 floats from one row to the next", 'fill="#a33"')
    p.y += 14
    p.space()
    for r in range(3):
        p.row("the half" if r == 0 else "", [("abc"[r], f"X{r},{k}") for k in range(5)], wide=2)
    p.text(LEFT, p.y + 14, "n1 / 2 + 1 = 5 complex numbers, the last dimension halved")
    p.y += 22
    return p


def half_complex() -> Picture:
    p = Picture(9)
    for n in (8, 7):
        real = [("a", f"re {k}") for k in range(n // 2 + 1)]
        imaginary = [("b", f"im {k}") for k in range((n - 1) // 2, 0, -1)]
        p.row(f"n = {n}", real + imaginary)
        p.space()
    return p


def batch() -> Picture:
    p = Picture(18)
    names = "abcd"
    p.row("in", [(names[t], f"{names[t]}{k}") for t in range(4) for k in range(4)])
    p.arrow(0, 1, "stride 1")
    p.arrow(0, 4, "distance 4")
    p.space()
    p.row("out", [(names[t], f"{names[t].upper()}{k}") for k in range(4) for t in range(4)])
    p.arrow(0, 4, "stride 4")
    p.arrow(0, 1, "distance 1")
    return p


def embed() -> Picture:
    p = Picture(11)
    for r in range(4):
        inside = r < 3
        p.row("5 columns" if r == 0 else "", [("a" if inside and k < 3 else "-", f"{r},{k}") for k in range(5)])
    p.arrow(0, 1, "stride 1")
    p.arrow(0, 5, "inembed[1] = 5: from row to row")
    p.text(LEFT, p.y + 12, "n = {3, 3}: a block of a larger array")
    p.y += 20
    return p


def main() -> None:
    folder = pathlib.Path(sys.argv[1])
    for draw in (padding, half_complex, batch, embed):
        draw().write(folder / f"layout_{draw.__name__}.svg")


if __name__ == "__main__":
    main()
