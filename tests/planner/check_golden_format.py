# SPDX-License-Identifier: Apache-2.0
"""The format of the golden trees: what headings, terms and tables stand for, and that writing loses nothing."""
import unittest

import golden_trees


def entries(text):
    return list(golden_trees.read_entries(text))


class Reading(unittest.TestCase):
    def test_a_heading_stands_for_every_combination_of_its_numbers(self):
        self.assertEqual(entries("# comment\n\nc2c 2..4 batch=5,7:\nc2c- {n} *{b}:{n}:{n}\n    a > b  aux {8n+16}"),
                         [(f"c2c {n} batch={b}", f"c2c- {n} *{b}:{n}:{n}\n    a > b  aux {8 * n + 16}")
                          for n in (2, 3, 4) for b in (5, 7)])

    def test_terms_know_halves_products_and_two_sizes(self):
        self.assertEqual(entries("r2c 5x7 batch=3 istride={2b}:\nr2c {n/2} {m/2+1} {4bn} {mn} {bm-1}"),
                         [("r2c 5x7 batch=3 istride=6", "r2c 2 4 60 35 20")])

    def test_brackets_stand_for_with_and_without(self):
        self.assertEqual(entries("dht 5 [inplace] batch=2:\nr2r dht 5{=}\n    a > b"),
                         [("dht 5 batch=2", "r2r dht 5\n    a > b"), ("dht 5 inplace batch=2", "r2r dht 5 =\n    a > b")])

    def test_a_table_holds_its_problems(self):
        self.assertEqual(entries("c2c {n}:\nc2c- {n}\n    a > b {p}  buffer {8q}\n| n p q ;\n| 22 11*2 3,\n| 7 7 4"),
                         [("c2c 22", "c2c- 22\n    a > b 11 2  buffer 24"), ("c2c 7", "c2c- 7\n    a > b 7  buffer 32")])

    def test_headings_may_be_several_broken_and_without_a_tree(self):
        self.assertEqual(entries("c2c 2,3,\n    5\n    backward:\nr2c 8:\nx\n\nc2c 9:"),
                         [("c2c 2 backward", "x"), ("c2c 3 backward", "x"), ("c2c 5 backward", "x"), ("r2c 8", "x"),
                          ("c2c 9", "")])

    def test_a_term_without_meaning_is_an_error(self):
        for term in ("8", "n+", "2z", "n/3", ""):
            with self.assertRaises((AttributeError, KeyError, ValueError)):
                entries(f"c2c 5:\nc2c- {{{term}}}")


class Writing(unittest.TestCase):
    def keeps(self, pairs):
        text = golden_trees.write_entries(pairs)
        self.assertEqual(sorted(entries(text)), sorted(pairs))
        return text

    def test_equal_trees_become_one_entry(self):
        text = self.keeps([(f"c2c {n}{place}", f"c2c- {n}{mark}\n    a > b  aux {24 * n + 8}\n  r2c {n // 2} =\n      c > d")
                           for n in (2, 3, 4, 9) for place, mark in (("", ""), (" inplace", " ="))])
        self.assertEqual(text, "c2c 2..4,9 [inplace]:\nc2c- {n}{=}\n    a > b  aux {24n+8}\n  r2c {n/2} =\n      c > d\n")

    def test_one_different_number_is_told(self):
        text = self.keeps([(f"c2c {n}", f"c2c- {n}\n    a > b  buffer {8 * n + (n == 6)}") for n in range(2, 9)])
        self.assertIn("6 49", text)

    def test_radices_are_told_one_by_one(self):
        text = self.keeps([("c2c 22", "c2c- 22\n    a > b 11 2  aux 4"), ("c2c 8", "c2c- 8\n    a > b 2 2 2  aux 4"),
                           ("c2c 7", "c2c- 7\n    a > b 7  aux 4")])
        self.assertIn("| 7 7, 8 2*2*2, 22 11*2", text)

    def test_other_names_other_places_and_other_sizes_stay_apart(self):
        self.keeps([("c2c 8", "c2c- 8\n    a > b"), ("c2c 8 inplace", "c2c- 8 =\n    a > c"),
                    ("c2c 9 inplace", "c2c- 9\n    a > b"), ("c2c 4x6", "c2c- 4x6\n    a > b_4x6 5"),
                    ("c2c 4x7", "c2c- 4x7\n    a > b_4x6 5"), ("c2c 2x3x4", "refused: 4")])

    def test_strides_are_told_by_the_batch_where_they_follow_it(self):
        text = self.keeps([(f"r2c 9 batch={b} istride={2 * b} ostride=3", f"r2c 9:{2 * b}:3") for b in (2, 5, 6)])
        self.assertIn("r2c 9 batch=2,5,6 istride={2b} ostride=3:\nr2c 9:{2b}:3\n", text)


if __name__ == "__main__":
    unittest.main()
