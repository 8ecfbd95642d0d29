# SPDX-License-Identifier: Apache-2.0
"""Tables by the clock beside modelled ones, with figures that were made up: test_against_model.py PROGRAM"""
import pathlib
import subprocess
import sys
import tempfile
import unittest

PROGRAM = sys.argv[1]
CLOCK = """problem,library,source,executions,runs,median_ns,min_ns,max_ns,nominal_mflops,ratio_to_last
c2c 8,libqfftf.so.1,{source},4,11,10.0,9.0,11.0,1,0.5
c2c 8,libfftw3f.so.3,{source},4,11,20.0,19.0,21.0,1,1
c2c 64,libqfftf.so.1,{source},4,11,80.0,9.0,11.0,1,0.4
c2c 64,libfftw3f.so.3,{source},4,11,200.0,19.0,21.0,1,1
"""
MODEL = """# machine: none
problem,library,source,cycles,cautious
c2c 8,libqfftf.so.1,model,20,40
c2c 8,libfftw3f.so.3,model,50,50
c2c 64,libqfftf.so.1,model,100,200
c2c 64,libfftw3f.so.3,model,400,400
"""


def joined(clock: str, model: str) -> subprocess.CompletedProcess:
    with tempfile.TemporaryDirectory() as folder:
        paths = [pathlib.Path(folder) / name for name in ("clock.csv", "model.csv")]
        for path, text in zip(paths, (clock, model)):
            path.write_text(text, encoding="utf-8")
        return subprocess.run([PROGRAM, *map(str, paths)], capture_output=True, text=True, check=False)


class AgainstModel(unittest.TestCase):
    def test_cycles_are_nanoseconds_times_the_stated_frequency(self):
        done = joined("# machine: some core, 2.500 GHz by dependent additions\n" + CLOCK.format(source="clock"), MODEL)
        self.assertEqual(done.returncode, 0, done.stderr)
        lines = done.stdout.splitlines()
        self.assertEqual(lines[2], "c2c 8,clock,10.0,25.000,20,40,1.250,0.625,1.000,0.500,0.400,0.800")
        self.assertEqual(lines[3], "c2c 64,clock,80.0,200,100,200,2.000,1.000,1.250,0.400,0.250,0.500")
        self.assertIn("# 2 problems; geometric means: off 1.581, by the cautious price 0.791, the peer's 1.118", lines[4])

    def test_an_emulated_clock_states_no_speed(self):
        done = joined("# machine: none\n" + CLOCK.format(source="emulated clock"), MODEL)
        self.assertEqual(done.returncode, 0, done.stderr)
        self.assertIn("EMULATED", done.stdout)
        self.assertIn("c2c 8,emulated clock,-,-,20,40,-,-,-,-,0.400,0.800", done.stdout.splitlines())

    def test_a_problem_that_only_the_clock_has_is_missed(self):
        model = "".join(line for line in MODEL.splitlines(True) if not line.startswith("c2c 8"))
        self.assertEqual(joined("# 2.5 GHz by dependent additions\n" + CLOCK.format(source="clock"), model).returncode, 1)


if __name__ == "__main__":
    unittest.main(argv=sys.argv[:1])
