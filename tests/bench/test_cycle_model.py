# SPDX-License-Identifier: Apache-2.0
"""The cycle model's counts and prices for marked_program.c: test_cycle_model.py MODEL_FOLDER PROGRAM"""
import csv
import io
import json
import shutil
import subprocess
import sys
import unittest

MODEL_FOLDER, PROGRAM = sys.argv[1:3]
sys.path.insert(0, MODEL_FOLDER)
import machine  # noqa: E402
from blocks import basic_blocks  # noqa: E402
from emulation import Piece, Profile, Region  # noqa: E402


def model(*options: str) -> str:
    return subprocess.run([MODEL_FOLDER + "/model", *options, "--", PROGRAM], capture_output=True, text=True,
                          check=True).stdout


class KnownProgram(unittest.TestCase):
    @classmethod
    def setUpClass(cls):
        cls.regions = json.loads(model("--format", "json", "--trace", "20000"))["regions"]

    def counts(self, region: int, *names: str) -> list[float]:
        return [self.regions[region][name] for name in names]

    def test_every_region_is_counted_by_itself(self):
        self.assertEqual(len(self.regions), 4)

    def test_loop(self):
        self.assertEqual(self.counts(0, "instructions", "loads", "stores", "fp"), [8000, 2000, 1000, 2000])
        self.assertEqual(self.counts(0, "spill_loads", "spill_stores"), [0, 0])
        self.assertEqual(self.counts(0, "loaded_bytes", "stored_bytes"), [32000, 16000])

    def test_straight_code_is_one_block(self):
        self.assertEqual(self.counts(1, "instructions", "loads", "stores", "fp"), [3000, 0, 0, 0])
        self.assertAlmostEqual(self.regions[1]["cycles"], 3000, delta=2)  # each add awaits the one before it

    def test_function(self):
        functions = self.regions[2]["functions"]
        self.assertEqual(self.regions[2]["instructions"], 500 * (1 + 8 + 1 + 2))
        self.assertEqual(functions["dependent_additions"]["instructions"], 500 * 9)
        self.assertEqual(functions["main"]["instructions"], 500 * 3)
        # 8 additions of 2 cycles, which also await those of the call before
        self.assertAlmostEqual(functions["dependent_additions"]["cycles"] / 500, 16, delta=0.01)

    def test_order_of_execution(self):
        self.assertAlmostEqual(self.regions[2]["traced_cycles"] / 500, 16, delta=0.2)
        self.assertAlmostEqual(self.regions[1]["traced_cycles"], 3000, delta=20)

    def test_spills(self):
        self.assertEqual(self.counts(3, "loads", "stores", "spill_loads", "spill_stores"), [3, 3, 2, 2])

    def test_csv(self):
        rows = list(csv.DictReader(io.StringIO(model("--format", "csv", "--per", "2"))))
        self.assertEqual([float(row["instructions"]) for row in rows[:2]], [4000, 1500])
        self.assertEqual(rows[0]["source"], "model")


class Blocks(unittest.TestCase):
    NOP, RET = 0xD503201F, 0xD65F03C0

    def joined(self, *pieces: tuple[int, int, list[int]]) -> list[tuple[int, int, int]]:
        profile = Profile(pieces={n: Piece(address, words) for n, (address, _, words) in enumerate(pieces)})
        region = Region(counts={n: count for n, (_, count, _) in enumerate(pieces)})
        return [(block.address, block.count, len(block.words)) for block in basic_blocks(profile, region)]

    def test_pieces_that_follow_are_joined(self):
        self.assertEqual(self.joined((0, 5, [self.NOP] * 3), (12, 5, [self.NOP, self.RET])), [(0, 5, 5)])

    def test_a_branch_ends_a_block(self):
        self.assertEqual(self.joined((0, 5, [self.RET]), (4, 5, [self.RET])), [(0, 5, 1), (4, 5, 1)])

    def test_a_join_from_elsewhere_begins_a_block(self):
        self.assertEqual(self.joined((0, 5, [self.NOP]), (4, 6, [self.RET])), [(0, 5, 1), (4, 6, 1)])

    def test_a_loop_that_is_entered_from_above_is_one_block(self):
        # the code above the loop at 4 runs once and on into its first round; a page ends behind 8
        self.assertEqual(self.joined((0, 1, [self.NOP] * 3), (4, 3, [self.NOP] * 2), (12, 4, [self.RET])),
                         [(0, 1, 1), (4, 4, 3)])

    def test_gaps_stay(self):
        self.assertEqual(self.joined((0, 5, [self.NOP]), (8, 5, [self.RET])), [(0, 5, 1), (8, 5, 1)])


class Kinds(unittest.TestCase):
    def test_kinds(self):
        for instruction, kinds in {
                "ld1w { z0.s }, p0/z, [x0]": ["loads"], "ldr z0, [sp, #3, mul vl]": ["loads", "spill_loads"],
                "ldr q0, [x1], #16": ["loads"], "ldp x29, x30, [sp], #16": ["loads", "pointer_loads"],
                "str z31, [sp]": ["stores", "spill_stores"], "st1w { z1.s }, p0, [sp]": ["stores", "spill_stores"],
                "st2 { v0.4s, v1.4s }, [x1]": ["stores"], "stur q1, [sp, #-16]": ["stores", "spill_stores"],
                "stp x0, x1, [sp]": ["stores"], "fcmla z0.s, p0/m, z1.s, z2.s, #90": ["fp"],
                "fadd v0.4s, v1.4s, v2.4s": ["fp"], "fmov s0, w1": [], "add x0, x0, #1": [],
                "mov v0.16b, v1.16b": []}.items():
            self.assertEqual(machine.Classifier().kinds(instruction), kinds, instruction)

    def test_registers_computed_from_the_stack_pointer(self):
        classifier = machine.Classifier()
        code = {"add x9, sp, #848": [], "addvl x10, x9, #2": [], "str z0, [x9, #3, mul vl]": ["stores", "spill_stores"],
                "ldr z0, [x10]": ["loads", "spill_loads"], "cmp x9, x10": [], "ldr q1, [x9]": ["loads", "spill_loads"],
                "add x9, x1, #16": [], "ldr q2, [x9]": ["loads"], "ldr x10, [sp, #8]": ["loads", "pointer_loads"],
                "ldr z1, [x10]": ["loads"]}
        for instruction, kinds in code.items():
            self.assertEqual(classifier.kinds(instruction), kinds, instruction)


    def test_bytes(self):
        for instruction, moved in {
                "ld1w { z0.s }, p0/z, [x0, x1, lsl #2]": 32, "ldr z0, [x1]": 32, "ldp q0, q1, [x0]": 32,
                "str d0, [x0]": 8, "ld1rd { z0.d }, p0/z, [x0]": 8, "ld1rqw { z0.s }, p0/z, [x0]": 16,
                "ld1 { v0.d }[1], [x0]": 8, "st2 { v0.4s, v1.4s }, [x1]": 32, "ld1 { v0.2s }, [x0]": 8,
                "st2d { z0.d, z1.d }, p0, [x0]": 64, "ldr x0, [x1, x2]": 8, "stp w0, w1, [x2, #8]": 8,
                "st1d { z0.d }, p0, [x1, z2.d]": 32}.items():
            self.assertEqual(machine.bytes_moved(instruction), moved, instruction)


class Prices(unittest.TestCase):
    def price(self, *lines: str) -> machine.Price:
        return machine.Machine("neoverse-v1").steady_prices([list(lines)])[0]

    def test_four_vector_pipes(self):
        price = self.price(*(f"fadd v{n}.4s, v30.4s, v31.4s" for n in range(16)))
        self.assertAlmostEqual(price.cycles, 4, delta=0.1)
        self.assertAlmostEqual(price.bounds["vector"], 4, delta=0.1)

    def test_without_favours_indexed_access_costs_one_access_for_each_element(self):
        gather = machine.without_favours(["ld1d { z3.d }, p0/z, [x1, z2.d]"])
        self.assertEqual(gather, ["ldr d3, [x1]"] * 4 + ["zip1 z3.d, z3.d, z3.d"] * 2)
        self.assertEqual(len(machine.without_favours(["ld1w { z3.s }, p0/z, [x1, z2.s, uxtw #2]"])), 8 + 4)
        scatter = machine.without_favours(["st1d { z4.d }, p1, [x5, z2.d]"])
        self.assertEqual(scatter, ["zip1 z31.d, z4.d, z4.d"] * 2 + ["str d4, [x5]"] * 4)

    def test_without_favours_data_of_sve_stores_takes_an_sve_pipe(self):
        stores = ["st1w { z1.s }, p0, [x0]", "str z1, [sp, #3, mul vl]", "st1w { z1.s }, p0, [x0, x1, lsl #2]"]
        self.assertEqual(machine.without_favours(stores), ["str q1, [x0]", "str q1, [sp]", "str q1, [x0]"])
        additions = [f"fadd z{n}.s, z30.s, z31.s" for n in range(8)]
        code = additions + ["st1w { z1.s }, p0, [x0]"] * 4
        self.assertAlmostEqual(self.price(*code).cycles, 4, delta=0.2)
        self.assertAlmostEqual(self.price(*machine.without_favours(code)).cycles, 6, delta=0.2)

    def test_without_favours_other_code_stays(self):
        code = ["ld1w { z1.s }, p0/z, [x0]", "ldr z1, [sp]", "str q1, [x0]", "stp q1, q2, [x0]", "st1 { v1.d }[1], [x0]"]
        self.assertEqual(machine.without_favours(code), code)

    def test_a_last_movprfx_and_system_instructions_can_be_priced(self):
        self.assertGreater(self.price("mrs x0, tpidr_el0", "movprfx z0, z1").cycles, 0)

    def test_a_call_costs_a_branch(self):
        self.assertLess(self.price("str x30, [sp]", "bl #4096").cycles, 3)


if __name__ == "__main__":
    if not all(shutil.which(program) for program in ("qemu-aarch64", "llvm-mca-19", "cc")):
        print("skipped: needs qemu-user, llvm-19 and a C compiler")
        sys.exit(77)
    unittest.main(argv=sys.argv[:1])
