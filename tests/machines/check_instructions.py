#!/usr/bin/env python3
# SPDX-License-Identifier: Apache-2.0
"""No object file may hold an instruction that its processors lack: a disassembler that knows no others must know all of
its code. With --must-find the files are such that it can't, which shows that the check finds something.

  check_instructions.py [--must-find] [--features LIST] FILE...
"""
import argparse
import re
import shutil
import subprocess
import sys

LINE = re.compile(r"\s*[0-9a-f]+:\s")


def disassembler() -> str:
    for name in ("llvm-objdump-19", "llvm-objdump"):
        if shutil.which(name):
            return name
    sys.exit(77)


def main() -> int:
    parser = argparse.ArgumentParser(description=__doc__, formatter_class=argparse.RawDescriptionHelpFormatter)
    parser.add_argument("--must-find", action="store_true")
    parser.add_argument("--features", default="", help="beyond Armv8.0, as llvm names them: +complxnum,+lse")
    parser.add_argument("files", nargs="+")
    options = parser.parse_args()
    command = [disassembler(), "-d", "--no-show-raw-insn", "--mcpu=generic"]
    if options.features:
        command.append("--mattr=" + options.features)
    code, strangers, where = 0, [], ""
    with subprocess.Popen(command + options.files, stdout=subprocess.PIPE, text=True) as process:
        for line in process.stdout:
            if "file format" in line or line.endswith(">:\n"):
                where = line.strip()
            elif LINE.match(line):
                code += 1
                if "<unknown>" in line:
                    strangers.append(f"{where} {line.strip()}")
    if process.returncode or code < 100:
        sys.exit(f"only {code} instructions were read")
    print(f"{code} instructions in {len(options.files)} files, {len(strangers)} that the processors lack")
    if not options.must_find:
        print("\n".join(strangers[:20]))
    return 0 if bool(strangers) == options.must_find else 1


if __name__ == "__main__":
    sys.exit(main())
