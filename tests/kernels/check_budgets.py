#!/usr/bin/env python3
# SPDX-License-Identifier: Apache-2.0
"""What the compiler made of each kernel must stay within its budget: instructions, and vector registers stored to the
stack, of the whole function, its start and its tails included; the larger one of both directions.

  check_budgets.py [--update] --compiler NAME-MAJOR --version VERSION --bench BENCH BUDGETS LIBRARY

BUDGETS is a text file: for each compiler the totals of each family, and under them what every kernel of the family may
have. Counts above it, kernels without a budget and budgets without a kernel are failures, one by one: a total hides none. With the very version that wrote the budgets nothing is let pass;
another version of the same compiler has some slack, and compilers that have no part aren't judged (exit 77).
--update (target update_kernel_budgets of the presets cross and cross-gcc) writes this compiler's part anew and leaves
the others: read the difference as you would read code.
"""
import argparse
import importlib.machinery
import importlib.util
import pathlib
import re
import sys
import textwrap

KERNEL = re.compile(r"(\w+)_(?:fwd|bwd)_n(\d+)(?:\(.*\))?$")
SKIPPED = 77
MOST_PRINTED = 40
WIDTH = 120
WORST = 10
HEAD = """\
# Budgets of the kernels: instructions, and behind a slash spill stores (vector registers stored to the stack) if there
# are any, of each function, the larger one of both directions; the family's totals ahead. Written by check_budgets.py
# --update; see its head.
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
    def __init__(self, text: str):
        self.versions: dict[str, str] = {}               # by compiler
        self.of: dict[str, dict[str, tuple[int, int]]] = {}  # by compiler and kernel
        for line in text.splitlines():
            if line.startswith("compiler "):
                _, compiler, version = line.split()
                self.versions[compiler], self.of[compiler] = version, {}
            elif line.startswith(" "):
                for kernel in line.split(","):
                    size, counts = kernel.split() if kernel.strip() else ("", "")
                    instructions, _, spills = counts.partition("/")
                    if size:
                        self.of[compiler][f"{family} {size}"] = int(instructions), int(spills or 0)
            elif line and not line.startswith("#"):
                family = line.split()[0]

    def text(self) -> str:
        return HEAD + "".join(self.part(compiler) for compiler in sorted(self.of))

    def part(self, compiler: str) -> str:
        families: dict[str, dict[str, tuple[int, int]]] = {}
        for kernel, counts in sorted(self.of[compiler].items()):
            family, size = kernel.split()
            families.setdefault(family, {})[size] = counts
        lines = ["", f"compiler {compiler} {self.versions[compiler]}", *self.worst(compiler)]
        for family, kernels in families.items():
            instructions, spills = map(sum, zip(*kernels.values()))
            lines.append(f"{family:28} {instructions:6} instructions {spills:5} spill stores")
            row = ", ".join(f"{size}\0{a}{f'/{b}' if b else ''}" for size, (a, b) in kernels.items())
            wrapped = textwrap.wrap(row, WIDTH, initial_indent="    ", subsequent_indent="    ", break_on_hyphens=False)
            lines += [line.replace("\0", " ") for line in wrapped]
        return "\n".join(lines) + "\n"

    def worst(self, compiler: str) -> list[str]:
        """The kernels that spill most for their size, as a comment."""
        share = sorted((-spills / instructions, kernel) for kernel, (instructions, spills) in self.of[compiler].items())
        told = ", ".join(f"{kernel} {-100 * part:.0f} %".replace(" ", "\0") for part, kernel in share[:WORST] if part)
        lines = textwrap.wrap(f"spill stores among the instructions, at the worst: {told}", WIDTH,
                              initial_indent="# ", subsequent_indent="# ", break_on_hyphens=False)
        return [line.replace("\0", " ") for line in lines]


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
    text = options.budgets.read_text() if options.budgets.exists() else ""
    budgets = Budgets(text)
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
    if budgets.text() != text:
        found.append(f"{options.budgets.name} is not as --update would write it")
    print("\n".join(found[:MOST_PRINTED]))
    below = sum(counts[k] < budgets.of[options.compiler][k] for k in counts.keys() & budgets.of[options.compiler].keys())
    print(f"{len(counts)} kernels, {len(found)} complaints, {below} below their budgets (--update takes that in)")
    return 1 if found else 0


if __name__ == "__main__":
    sys.exit(main())
