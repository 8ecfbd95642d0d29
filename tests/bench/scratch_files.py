# SPDX-License-Identifier: Apache-2.0
"""Test cases with files of their own, which are gone afterwards."""
import pathlib
import tempfile
import unittest


class ScratchFiles(unittest.TestCase):
    def setUp(self):
        self.folder = tempfile.TemporaryDirectory()
        self.addCleanup(self.folder.cleanup)

    def file(self, name: str, text: str) -> str:
        path = pathlib.Path(self.folder.name) / name
        path.write_text(text)
        return str(path)
