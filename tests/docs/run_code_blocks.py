#!/usr/bin/env python3
# SPDX-License-Identifier: Apache-2.0
"""Runs every code block of the pages: programs and fragments in C, C++ and Fortran are compiled against the installed
library and run, and print what the block of text behind them shows; so are programs on other libraries where those are
installed; CMake is configured and built; shell commands run, or if they would build or fetch too much, their
scripts and options are looked up.

  run_code_blocks.py ROOT PREFIX WORK PAGE...      C, CXX, FORTRAN, TOOLCHAIN, EMULATOR in the environment
"""
import concurrent.futures
import os
import pathlib
import re
import shlex
import shutil
import subprocess
import sys

from blocks import Block, blocks_of
from shell_blocks import run_shell

LANGUAGES = {"c", "cpp", "fortran", "cmake", "sh", "python", "matlab", "text"}
HEADERS = ("complex.h", "math.h", "stdio.h", "stdlib.h", "string.h", "qfftf.h")
HOST_COMPILER = os.environ.get("HOST_CC", "cc")


class Complaint(Exception):
    pass


class Skipped(Exception):
    pass


def run(command: list[str], folder: pathlib.Path, what: str, **more) -> str:
    done = subprocess.run(command, cwd=folder, text=True, stdout=subprocess.PIPE, timeout=120,
                          **{"stderr": subprocess.STDOUT, **more})
    if done.returncode != 0:
        raise Complaint(f"{what} failed with {done.returncode}:\n{done.stdout}")
    return done.stdout


def compare(block: Block, printed: str) -> None:
    if block.prints is not None and printed.split() != block.prints.split():
        raise Complaint(f"it prints\n{printed}where the page says\n{block.prints}")


def c_fragment(block: Block) -> str:
    return "".join(f"#include <{h}>\n" for h in HEADERS) + "int main(void) {\n" \
        + block.remarks.get("with", "") + "\n" + block.text + "return 0;\n}\n"


def cxx_fragment(block: Block) -> str:
    return "#include <qfftf.hpp>\n#include <cstdio>\nint main() {\n" \
        + block.remarks.get("with", "") + "\n" + block.text + "}\n"


def fixed_form(block: Block) -> str:
    return "      program page\n" + block.remarks.get("with", "") + "\n" + block.text + "      end\n"


class Runner:
    def __init__(self, root: pathlib.Path, prefix: pathlib.Path, work: pathlib.Path):
        self.root, self.prefix, self.work = root, prefix, work
        self.link = [f"-I{prefix}/include", f"-L{prefix}/lib", "-lqfftf", "-lm", f"-Wl,-rpath,{prefix}/lib"]
        self.emulator = shlex.split(os.environ.get("EMULATOR", ""))
        self.scripts_seen: list[str] = []

    def folder(self, block: Block) -> pathlib.Path:
        name = re.sub(r"\W", "_", str(block.page)) + f"_{block.line}"
        folder = self.work / name
        folder.mkdir(parents=True)
        return folder

    def compiled(self, block: Block, command: str, source: str, text: str, flags: list[str]) -> None:
        folder = self.folder(block)
        (folder / source).write_text(text)
        extra = [f"{self.prefix}/include/qfftf.f90"] if source.endswith(".f90") else []
        run(shlex.split(command) + flags + extra + [source, "-o", "program"] + self.link, folder, "compiling")
        compare(block, run(self.emulator + ["./program"], folder, "the program"))

    def c(self, block: Block) -> None:
        if "peer" in block.remarks:
            return self.peer(block)
        if block.is_program:
            self.compiled(block, os.environ["C"], "program.c", block.text, ["-std=c99", "-Wall", "-Wextra", "-Werror"])
        else:
            self.compiled(block, os.environ["C"], "fragment.c", c_fragment(block), ["-Wall", "-Werror", "-Wno-unused"])

    def peer(self, block: Block) -> None:
        folder, library = self.folder(block), block.remarks["peer"]
        probe = subprocess.run([HOST_COMPILER, "-x", "c", "-", "-o", "probe", f"-l{library}"], cwd=folder, text=True,
                               input="int main(void) { return 0; }", capture_output=True)
        if probe.returncode != 0:
            raise Skipped(f"no {library} on this machine")
        (folder / "program.c").write_text(block.text)
        run([HOST_COMPILER, "-std=gnu11", "program.c", "-o", "program", "-I/usr/include/kissfft", f"-l{library}", "-lm"],
            folder, f"compiling with {library}")
        compare(block, run(["./program"], folder, "the program"))

    def cpp(self, block: Block) -> None:
        whole = block.text if block.is_program else cxx_fragment(block)
        self.compiled(block, os.environ["CXX"], "program.cpp", whole,
                      ["-std=c++20", "-Wall", "-Wno-unused", "-Werror", "-pthread"])

    def fortran(self, block: Block) -> None:
        command = os.environ.get("FORTRAN", "")
        if not command or not shutil.which(shlex.split(command)[0]):
            raise Skipped("there is no Fortran compiler")
        if all(line.startswith("      ") for line in block.text.splitlines()):
            self.compiled(block, command, "program.f", fixed_form(block), [])
        else:
            self.compiled(block, command, "program.f90", block.text, ["-Wall"])

    def cmake(self, block: Block) -> None:
        folder = self.folder(block)
        (folder / "program.c").write_text("#include <qfftf.h>\nint main(void) { qsl_fftf_cleanup(); return 0; }\n")
        frame = "" if "project(" in block.text else \
            "cmake_minimum_required(VERSION 3.20)\nproject(page C)\nadd_executable(program program.c)\n"
        (folder / "CMakeLists.txt").write_text(frame + block.text)
        compiler = ["--toolchain", os.environ["TOOLCHAIN"]] if os.environ.get("TOOLCHAIN") else \
            ["-D", f"CMAKE_C_COMPILER={os.environ['C']}"]
        run(["cmake", "-S", ".", "-B", "b", "-G", "Ninja", "-D", f"CMAKE_PREFIX_PATH={self.prefix}"] + compiler,
            folder, "configuring")
        run(["cmake", "--build", "b"], folder, "building")

    def python(self, block: Block) -> None:
        modules = re.findall(r"^\s*(?:import|from) (\w+)", block.text, re.MULTILINE)
        imports = "\n".join(f"import {module}" for module in modules)
        for python in (sys.executable, "/usr/bin/python3"):  # the system's own has the packages of Debian
            if subprocess.run([python, "-c", imports], capture_output=True).returncode == 0:
                return compare(block, run([python, "-"], self.folder(block), "the program", input=block.text))
        raise Skipped(f"no python3 here has all of {modules}")

    def matlab(self, block: Block) -> None:
        if not shutil.which("octave-cli"):
            raise Skipped("there is no octave-cli")
        command = ["octave-cli", "--quiet", "--eval", block.text]  # which may complain of its own exit
        compare(block, run(command, self.folder(block), "the program", stderr=subprocess.DEVNULL))

    def sh(self, block: Block) -> None:
        complaints = run_shell(block, self)
        if complaints:
            raise Complaint("\n".join(complaints))

    def run(self, block: Block) -> str:
        """An empty text if all is well, "skipped: ..." or what is wrong."""
        try:
            if block.language not in LANGUAGES:
                raise Complaint(f"a block has one of the languages {sorted(LANGUAGES)}")
            if block.language != "text" and ("not run" not in block.remarks or block.language == "sh"):
                getattr(self, block.language)(block)
            return "skipped: " + block.remarks["not run"] if "not run" in block.remarks else ""
        except Skipped as reason:
            return f"skipped: {reason}"
        except (Complaint, subprocess.TimeoutExpired) as reason:
            return f"FAILED: {reason}"


def main() -> int:
    root, prefix, work = (pathlib.Path(a).resolve() for a in sys.argv[1:4])
    shutil.rmtree(work, ignore_errors=True)
    work.mkdir(parents=True)
    found = [b for page in sys.argv[4:] for b in blocks_of(pathlib.Path(page), (root / page).read_text())]
    runner = Runner(root, prefix, work)
    for block in found:  # shell blocks compile programs that stand before them
        block.programs_before = [b for b in found if b.page == block.page and b.line < block.line and b.is_program]
    with concurrent.futures.ThreadPoolExecutor(2) as pool:
        results = list(pool.map(runner.run, found))
    ran = 0
    for block, result in zip(found, results):
        if result:
            print(f"{block}: {result}")
        ran += not result and block.language != "text"
    failed = sum(result.startswith("FAILED") for result in results)
    print(f"{ran} blocks are right, {failed} failed, of {len(found)}")
    return 1 if failed or not ran else 0


if __name__ == "__main__":
    sys.exit(main())
