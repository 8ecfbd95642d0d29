#!/usr/bin/env python3
# SPDX-License-Identifier: Apache-2.0
"""scripts/mutants on a library of one file: which changes it finds in a line, and how it judges them.

  test_mutants.py ROOT COMPILER
"""
import hashlib
import importlib.machinery
import importlib.util
import pathlib
import re
import subprocess
import sys
import tempfile

sys.dont_write_bytecode = True
ROOT, COMPILER = pathlib.Path(sys.argv[1]), sys.argv[2]

LIBRARY = """\
// a + b in a comment, and the text "x < y"
extern "C" int larger(int a, int b) { return a < b ? b : a; }
extern "C" int unseen(int a) { return a + 1; }
extern "C" int unchanged(int a) { return a * 1; }
static_assert(1 + 1 == 2);
"""
PROGRAM = """\
extern "C" int larger(int, int);
int main() { return larger(1, 2) == 2 && larger(3, 2) == 3 ? 0 : 1; }
"""
SITES = ["dft/toy.cpp:2(48): < -> <=", "dft/toy.cpp:2(48): < -> >=", "dft/toy.cpp:3(41): + -> -", "dft/toy.cpp:3(43): 1 -> 0",
         "dft/toy.cpp:3(43): 1 -> 2", "dft/toy.cpp:4(44): * -> /", "dft/toy.cpp:4(46): 1 -> 0", "dft/toy.cpp:4(46): 1 -> 2"]
VERDICTS = {
    "dft/toy.cpp:2(48): < -> >=": "test_toy",  # the smaller one
    "dft/toy.cpp:2(48): < -> <=": "same code",  # of equal numbers either
    "dft/toy.cpp:3(41): + -> -": "survived",  # nobody calls it
    "dft/toy.cpp:4(44): * -> /": "same code",
    "dft/toy.cpp:2: int -> sting": "doesn't compile",
}


def load_script(tree: pathlib.Path):
    loader = importlib.machinery.SourceFileLoader("mutants", str(ROOT / "scripts" / "mutants"))
    script = importlib.util.module_from_spec(importlib.util.spec_from_loader("mutants", loader))
    sys.modules["mutants"] = script
    loader.exec_module(script)
    known = set(re.findall(r"[\w-]+", " ".join(file.read_text() for file in ROOT.glob("tests/**/CMakeLists.txt"))))
    unknown = {test for tests in script.TESTS.values() for test in tests} - known
    assert not unknown, f"scripts/mutants names tests that don't exist: {unknown}"
    script.ROOT, script.TESTS = tree, {"dft": ["test_toy"]}
    return script


def toy_copy(script, tree: pathlib.Path):
    class Toy(script.Copy):
        """A copy whose library is one object file and whose test is one program."""
        def __init__(self):
            self.tree = self.build = tree
            assert self.make("qfftf_internal") and self.make("test_toy")
            self.code = self.digest()

        def compile(self, *words) -> bool:
            return subprocess.run([COMPILER, "-O1", *words], cwd=tree, capture_output=True).returncode == 0

        def make(self, target: str) -> bool:
            if target == "qfftf_internal":
                return self.compile("-c", "dft/toy.cpp", "-o", "toy.o")
            return self.compile("program.cpp", "toy.o", "-o", target)

        def digest(self) -> str:
            return hashlib.sha256((tree / "toy.o").read_bytes()).hexdigest()

        def ctest(self, test: str):
            return [tree / test]
    return Toy()


def main() -> int:
    with tempfile.TemporaryDirectory() as folder:
        tree = pathlib.Path(folder)
        (tree / "dft").mkdir()
        (tree / "dft" / "toy.cpp").write_text(LIBRARY)
        (tree / "program.cpp").write_text(PROGRAM)
        script = load_script(tree)
        found = [str(m) for line in script.sites_of("dft/toy.cpp") for m in line]
        assert found == SITES, found
        assert [str(script.told_mutant(words)) for words in SITES] == SITES
        first, again = (list(script.random_mutants(["dft"], 1)) for _ in range(2))
        assert first == again and len(first) == 3, first
        copy = toy_copy(script, tree)
        for words, expected in VERDICTS.items():
            verdict = copy.verdict(script.told_mutant(words), {"test_toy": 0.1})
            assert verdict == expected, f"{words}: {verdict}, not {expected}"
            assert (tree / "dft" / "toy.cpp").read_text() == LIBRARY, "the file isn't as it was"
    print("ok")
    return 0


if __name__ == "__main__":
    sys.exit(main())
