# SPDX-License-Identifier: Apache-2.0
"""Tables of Markdown from those of the cycle model: test_tables.py BENCH"""
import pathlib
import subprocess
import sys
import unittest

sys.dont_write_bytecode = True
from scratch_files import ScratchFiles  # noqa: E402

BENCH = pathlib.Path(sys.argv[1])
COSTS = """# list: few, 2026-01-01
# commit: abc
problem,library,cycles,cautious,instructions,spill_loads,spill_stores,bound,bound_cautious,bytes_per_cycle
c2c 8,ours,16,20,1234,3,4,vector 90%,memory 80%,1.0
c2c 8,peer,32,32,1000,0,0,vector 90%,vector 90%,1.0
"""
MOVEMENTS = """problem,library,cycles,cautious,bytes_per_cycle
transpose 4x4,ours,10,20,50.0
transpose 4x4,peer,40,40,12.5
transpose 4x4,memcpy,8,8,62.5
"""


class Tables(ScratchFiles):
    def table(self, *words: str, check: bool = True) -> subprocess.CompletedProcess:
        return subprocess.run([BENCH / "model" / "table", *words], capture_output=True, text=True, check=check)

    def test_both_prices_stand_beside_the_peer(self):
        self.assertIn("| `c2c 8` | 16 | 32 | 0.50 | 20 | 32 | 0.62 | vector 90% | memory 80% | 1,234 | 7 |",
                      self.table(self.file("t.csv", COSTS)).stdout)

    def test_movements_are_bytes_in_a_cycle_by_both_prices(self):
        self.assertIn("| `transpose 4x4` | 50.0, 25.0 | 12.5, 12.5 | 62.5, 62.5 |",
                      self.table(self.file("t.csv", MOVEMENTS)).stdout)

    def test_a_place_gets_the_table_and_where_it_comes_from(self):
        page = self.file("page.md", "one\n<!-- few -->\nold\n<!-- end of few -->\ntwo\n")
        self.table(self.file("t.csv", COSTS), "--page", page, "--place", "few")
        text = pathlib.Path(page).read_text()
        self.assertTrue(text.startswith("one\n<!-- few -->\n\nlist: few, 2026-01-01; commit: abc.\n\n| problem"), text)
        self.assertTrue(text.endswith("|\n\n<!-- end of few -->\ntwo\n"), text)
        self.assertNotIn("old", text)

    def test_a_page_without_the_place_and_an_empty_table_are_refused(self):
        page = self.file("page.md", "one\n")
        self.assertNotEqual(
            self.table(self.file("t.csv", COSTS), "--page", page, "--place", "few", check=False).returncode, 0)
        self.assertEqual(pathlib.Path(page).read_text(), "one\n")
        self.assertNotEqual(self.table(self.file("e.csv", "problem,library\n"), check=False).returncode, 0)

    def test_any_text_goes_into_a_place(self):
        page = self.file("page.md", "<!-- a -->\n<!-- end of a -->\n")
        subprocess.run([BENCH / "page.py", page, "a", self.file("text", "new\n")], check=True)
        self.assertEqual(pathlib.Path(page).read_text(), "<!-- a -->\n\nnew\n\n<!-- end of a -->\n")


if __name__ == "__main__":
    unittest.main(argv=sys.argv[:1])
