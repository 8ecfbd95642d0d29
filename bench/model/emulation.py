# SPDX-License-Identifier: Apache-2.0
"""Runs a program under the user-mode emulator and reads what the plugin block_counter.c counted."""
import os
import pathlib
import re
import subprocess
import sys
import tempfile
from dataclasses import dataclass, field

HERE = pathlib.Path(__file__).parent
PROCESSOR = "max,sve-default-vector-length=32"  # 32 bytes: SVE at 256 bits
EMULATOR = ["qemu-aarch64", "-cpu", PROCESSOR]


@dataclass
class Piece:
    """A straight piece of code."""
    address: int
    words: list[int]


@dataclass
class Region:
    counts: dict[int, int] = field(default_factory=dict)  # piece number -> times
    trace: list[int] | None = None                         # piece numbers in order


@dataclass
class Profile:
    pieces: dict[int, Piece] = field(default_factory=dict)
    regions: list[Region] = field(default_factory=list)
    files: list[tuple[int, int, int, str]] = field(default_factory=list)  # start, end, offset, path
    output: str = ""                                                      # what the program printed
    status: int = 0                                                       # what it returned


def plugin(source: pathlib.Path = HERE / "block_counter.c", emulator: str = "qemu-aarch64") -> str:
    """Builds a plugin for the installed emulator, once per version of both."""
    try:
        text = subprocess.run([emulator, "--version"], capture_output=True, text=True, check=True).stdout
    except FileNotFoundError:
        sys.exit(f"{emulator} is missing (package qemu-user)")
    major = int(re.search(r"version (\d+)", text).group(1))
    cache = pathlib.Path(os.environ.get("XDG_CACHE_HOME", pathlib.Path.home() / ".cache")) / "qfftf"
    cache.mkdir(parents=True, exist_ok=True)
    library = cache / f"{source.stem}-{major}-{int(source.stat().st_mtime)}.so"
    if not library.exists():
        with tempfile.TemporaryDirectory(dir=cache) as folder:
            fresh = pathlib.Path(folder) / "plugin.so"
            subprocess.run(["cc", "-O2", "-fPIC", "-shared", f"-DCOUNTER_API={1 if major < 9 else 2}", str(source),
                            "-o", str(fresh)], check=True)
            fresh.replace(library)
    return str(library)


def run(command: list[str], trace_limit: int = 0, processor: str = PROCESSOR) -> Profile:
    with tempfile.TemporaryDirectory() as folder:
        counted = pathlib.Path(folder) / "counted"
        options = f"{plugin()},out={counted},trace={trace_limit}"
        done = subprocess.run(["qemu-aarch64", "-cpu", processor, "-plugin", options] + command,
                              stdout=subprocess.PIPE, text=True)
        if not counted.exists():
            sys.exit("model: nothing was counted")
        with open(counted) as lines:
            profile = read(lines)
    profile.output, profile.status = done.stdout, done.returncode
    return profile


def read(lines) -> Profile:
    profile = Profile()
    for line in lines:
        record, *rest = line.split()
        if record == "block":
            profile.pieces[int(rest[0])] = Piece(int(rest[1], 16), [int(word, 16) for word in rest[2:]])
        elif record == "region":
            profile.regions.append(Region())
        elif record == "count":
            profile.regions[-1].counts[int(rest[0])] = int(rest[1])
        elif record == "trace":
            profile.regions[-1].trace = [int(number) for number in rest]
        elif record == "file":
            start, end, offset = (int(text, 16) for text in rest[:3])
            profile.files.append((start, end, offset, " ".join(rest[3:])))
    return profile
