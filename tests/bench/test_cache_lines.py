# SPDX-License-Identifier: Apache-2.0
"""The lines that bench/caches counts in walks of known length: test_cache_lines.py CACHES WALKER"""
import csv
import pathlib
import shutil
import subprocess
import sys
import unittest

sys.dont_write_bytecode = True
from scratch_files import ScratchFiles  # noqa: E402

CACHES, WALKER = sys.argv[1:3]


def caches(*words: str, check: bool = True) -> subprocess.CompletedProcess:
    return subprocess.run([CACHES, *words], capture_output=True, text=True, check=check)


class Walks(unittest.TestCase):
    @classmethod
    def setUpClass(cls):
        output = caches("--format", "csv", WALKER, "none", "--", "c2c 1000").stdout
        cls.rows = [[float(row[name]) for name in ("l1", "l1_seen", "l2", "l2_seen")]
                    for row in csv.DictReader(output.splitlines())]

    # The stack and the output are a few lines more.
    def expect(self, region: int, *lines: float):
        for counted, wanted in zip(self.rows[region], lines):
            self.assertLess(abs(counted - wanted), 8, f"region {region}: {self.rows[region]}, not {lines}")

    def test_what_fits_into_the_first_level_stays(self):
        self.expect(0, 0, 0, 0, 0)

    def test_what_fits_into_the_second_level_comes_from_there(self):
        self.expect(1, 2048, 2048, 0, 0)

    def test_stores_allocate(self):
        self.expect(2, 2048, 2048, 0, 0)

    def test_what_fits_nowhere_comes_from_memory_each_line_once(self):
        self.expect(3, 32768, 32768, 32768, 32768)

    def test_lines_with_gaps_are_not_ahead(self):
        self.expect(4, 16384, 0, 16384, 0)

    def test_an_access_across_two_lines_takes_both(self):
        self.expect(5, 2048, 2048, 0, 0)


CYCLES = "problem,library,cautious\nc2c 1000,a,2000\nc2c 1000,b,3000\n"
TABLE = "# a comment\nproblem,library,l1,l1_seen,l2,l2_seen,in_core,with_fills\n" \
        "c2c 1000,a,900,450,100,0,2000,20000\nc2c 1000,b,700,0,100,0,3000,40000\n"


class Tables(ScratchFiles):
    def test_what_misses_an_aim_is_bold(self):
        self.assertIn("| c2c 1000 | **900** | 700 | 100 | 100 | 50 % | 0 % | 20000 | 40000 | 0.50 |",
                      caches("--table", self.file("t.csv", TABLE)).stdout)

    def test_a_page_keeps_what_stands_around_the_place(self):
        front, end = "<!-- caches -->", "<!-- end of caches -->"
        page = self.file("page.md", f"one\n{front}\nold\n{end}\ntwo\n")
        caches("--table", self.file("t.csv", TABLE), "--page", page)
        text = pathlib.Path(page).read_text()
        self.assertTrue(text.startswith(f"one\n{front}\n\n| problem") and text.endswith(f"|\n\n{end}\ntwo\n"), text)
        self.assertNotIn("old", text)
        bare = self.file("bare.md", "one\n")
        self.assertNotEqual(caches("--table", self.file("t.csv", TABLE), "--page", bare, check=False).returncode, 0)

    def test_cycles_of_other_problems_are_refused(self):
        done = caches("--cycles", self.file("c.csv", CYCLES), WALKER, "none", "--", "c2c 1000", check=False)
        self.assertIn("is of other problems", done.stderr)


if __name__ == "__main__":
    if not shutil.which("qemu-x86_64") or not shutil.which("cc"):
        sys.exit(77)
    unittest.main(argv=sys.argv[:1])
