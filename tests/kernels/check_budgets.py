#!/usr/bin/env python3
# SPDX-License-Identifier: Apache-2.0
"""What the compiler made of each kernel must stay within its budget: instructions, and vector registers stored to the
stack, of the whole function, its start and its tails included; the larger one of both directions.

  check_budgets.py [--update] --compiler NAME-MAJOR --version VERSION --bench BENCH BUDGETS LIBRARY

BUDGETS is a text file: one line for each kernel, two columns for each compiler. Counts above it, kernels without a
budget and budgets without a kernel are failures. With the very version that wrote the budgets nothing is let pass;
another version of the same compiler has some slack, and compilers that have no columns aren't judged (exit 77).
--update (target update_kernel_budgets of the presets cross and cross-gcc) writes this compiler's columns anew and leaves
the others: read the difference as you would read code.
"""
import argparse
import importlib.machinery
import importlib.util
import pathlib
import re
import sys

KERNEL = re.compile(r"(\w+)_(?:fwd|bwd)_n(\d+)(?:\(.*\))?$")
SKIPPED = 77
MOST_PRINTED = 40
HEAD = """\
# Budgets of the kernels: instructions and spill stores (vector registers stored to the stack) of each function, the
# larger one of both directions, for each compiler. Written by check_budgets.py --update; see its head.
"""


def load_counting(bench: str):
    """bench/kernels/kernels as a module."""
    path = str(pathlib.Path(bench) / "kernels" / "kernels")
    loader = importlib.machinery.SourceFileLoader("kernels", path)
    module = importlib.util.module_from_spec(importlib.util.spec_from_loader("kernels", loader))
    sys.dont_write_bytecode = True
    loader.exec_module(module)
    return module


def measured(counting, library: str) -> dict[str, tuple[int, int]]:
    """Instructions and spill stores by kernel."""
    every = list(counting.functions(library))
    by_address = {code[0][0]: code for _, code in every}
    counts: dict[str, tuple[int, int]] = {}
    for name, code in every:
        if not (found := KERNEL.match(name)) or found[1].startswith("run_"):
            continue
        whole = counting.with_tail_call(code, by_address)
        classifier = counting.Classifier()
        spills = sum("spill_stores" in classifier.kinds(instruction) for _, instruction in whole)
        kernel = f"{found[1]} n{int(found[2]):02}"
        known = counts.get(kernel, (0, 0))
        counts[kernel] = (max(known[0], len(whole)), max(known[1], spills))
    return counts


class Budgets:
    def __init__(self, path: pathlib.Path):
        self.versions: dict[str, str] = {}               # by compiler
        self.of: dict[str, dict[str, tuple[int, int]]] = {}  # by compiler and kernel
        for line in path.read_text().splitlines() if path.exists() else []:
            if line.startswith("compiler "):
                _, name, version = line.split()
                self.versions[name], self.of[name] = version, {}
            elif line and not line.startswith("#"):
                family, size, *numbers = line.split()
                for compiler, (instructions, spills) in zip(self.of, zip(numbers[::2], numbers[1::2])):
                    if instructions != "-":
                        self.of[compiler][f"{family} {size}"] = int(instructions), int(spills)

    def text(self) -> str:
        lines = [HEAD.rstrip()]
        compilers = sorted(self.of)
        lines += [f"compiler {name} {self.versions[name]}" for name in compilers]
        lines.append(f"{'# kernel':24} {'size':5}" + "".join(f"{name:>16}" + " " * 8 for name in compilers).rstrip())
        for kernel in sorted({kernel for counts in self.of.values() for kernel in counts}):
            family, size = kernel.split()
            columns = (self.of[name].get(kernel, ("-", "-")) for name in compilers)
            lines.append(f"{family:24} {size:5}" + "".join(f"{a:>16}{b:>8}" for a, b in columns))
        return "\n".join(lines) + "\n"


def complaints(counts: dict[str, tuple[int, int]], budgets: dict[str, tuple[int, int]], exact: bool) -> list[str]:
    found = [f"{kernel} has no budget" for kernel in counts.keys() - budgets.keys()]
    found += [f"{kernel} has a budget and doesn't exist" for kernel in budgets.keys() - counts.keys()]
    for kernel in counts.keys() & budgets.keys():
        for what, count, budget in zip(("instructions", "spill stores"), counts[kernel], budgets[kernel]):
            if count > (budget if exact else budget + max(4, budget // 20)):
                found.append(f"{kernel} has {count} {what}, and a budget of {budget}")
    return sorted(found)


def main() -> int:
    parser = argparse.ArgumentParser(description=__doc__, formatter_class=argparse.RawDescriptionHelpFormatter)
    parser.add_argument("--update", action="store_true")
    parser.add_argument("--compiler", required=True)
    parser.add_argument("--version", required=True)
    parser.add_argument("--bench", required=True)
    parser.add_argument("budgets", type=pathlib.Path)
    parser.add_argument("library")
    options = parser.parse_args()
    budgets = Budgets(options.budgets)
    if options.compiler not in budgets.of and not options.update:
        print(f"{options.compiler} has no budgets")
        return SKIPPED
    counts = measured(load_counting(options.bench), options.library)
    if options.update:
        budgets.of[options.compiler], budgets.versions[options.compiler] = counts, options.version
        options.budgets.write_text(budgets.text())
        print(f"{len(counts)} budgets of {options.compiler} {options.version} written")
        return 0
    exact = budgets.versions[options.compiler] == options.version
    found = complaints(counts, budgets.of[options.compiler], exact)
    print("\n".join(found[:MOST_PRINTED]))
    below = sum(counts[k] < budgets.of[options.compiler][k] for k in counts.keys() & budgets.of[options.compiler].keys())
    print(f"{len(counts)} kernels, {len(found)} complaints, {below} below their budgets (--update takes that in)")
    return 1 if found else 0


if __name__ == "__main__":
    sys.exit(main())
