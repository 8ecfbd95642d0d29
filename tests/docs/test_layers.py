#!/usr/bin/env python3
# SPDX-License-Identifier: Apache-2.0
"""Each folder of the library includes only folders below it. ARCHITECTURE.md shows the layers, and they are read there.

  test_layers.py ROOT
"""
import pathlib
import re
import sys
import unittest

LAYERS = re.compile(r"^```layers\n(.*?)^```$", re.MULTILINE | re.DOTALL)
FOLDER = re.compile(r"^([\w/ ]+?)(?:  .*)?$")
INCLUDE = re.compile(r'^#include "([^"]+)"', re.MULTILINE)


def layers(architecture: str) -> list[list[str]]:
    """From the top: the folders of each layer, which stand in front of two spaces."""
    return [FOLDER.match(line)[1].split() for line in LAYERS.search(architecture)[1].splitlines()]


def violations(order: list[list[str]], sources: dict[str, str]) -> list[str]:
    """`sources` maps the paths of files to their texts. Files of no layer may include what they like."""
    height = {folder: -i for i, row in enumerate(order) for folder in row}
    found = []
    for path, text in sources.items():
        own = path.split("/")[0]
        for included in INCLUDE.findall(text) if own in height else []:
            other = included.split("/")[0]
            if "/" in included and other != own and height.get(other, 1) >= height[own]:
                found.append(f"{path} includes {included}, which isn't below it")
    return found


class Layers(unittest.TestCase):
    root = pathlib.Path()

    def setUp(self):
        self.order = layers((self.root / "ARCHITECTURE.md").read_text())
        self.sources = {str(p.relative_to(self.root)): p.read_text() for row in self.order for folder in row
                        for p in sorted((self.root / folder).rglob("*")) if p.suffix in (".h", ".hpp", ".c", ".cpp")}

    def test_each_folder_includes_only_folders_below_it(self):
        self.assertEqual(violations(self.order, self.sources), [])

    def test_every_folder_of_the_library_has_a_layer(self):
        build = (self.root / "CMakeLists.txt").read_text()
        compiled = {folder for folder in re.findall(r"^add_subdirectory\((\w+)\)", build, re.MULTILINE)}
        self.assertEqual({folder for row in self.order for folder in row}, compiled - {"tools"} | {"include"})

    def test_a_planted_include_is_found_in_every_folder(self):
        for i, row in enumerate(self.order):
            for above in [folder for upper in self.order[:i] for folder in upper] + ["tests", "tools"]:
                for folder in row:
                    planted = {f"{folder}/deep/planted.cpp": f'#include <cstdio>\n#include "{above}/any.h"\n'}
                    self.assertEqual(len(violations(self.order, planted)), 1, f"{folder} may include {above}")

    def test_folders_of_one_layer_do_not_include_each_other(self):
        for row in self.order:
            for a, b in ((a, b) for a in row for b in row if a != b):
                self.assertEqual(len(violations(self.order, {f"{a}/x.h": f'#include "{b}/y.h"\n'})), 1, f"{a}, {b}")


if __name__ == "__main__":
    Layers.root = pathlib.Path(sys.argv.pop(1))
    unittest.main()
