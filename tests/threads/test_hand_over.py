#!/usr/bin/env python3
# SPDX-License-Identifier: Apache-2.0
"""What a loop costs its caller when the workers exist: instructions per worker, and no system call at all.

test_hand_over.py FOLDER_OF_THE_MODEL PROGRAM
"""
import shutil
import subprocess
import sys

if not shutil.which("qemu-aarch64") or not shutil.which("cc"):
    sys.exit(77)
sys.path.insert(0, sys.argv[1])
from emulation import EMULATOR, run  # noqa: E402

program = sys.argv[2]
most_instructions_per_worker = 400


def instructions(workers: int) -> list[int]:
    """On the caller's side, of the hand-over and of the join."""
    profile = run([program, str(workers)])
    assert len(profile.regions) == 2, f"{len(profile.regions)} regions"
    return [sum(times * len(profile.pieces[piece].words) for piece, times in region.counts.items())
            for region in profile.regions]


def check_cost() -> None:
    one, five = instructions(1), instructions(5)
    for name, of_one, of_five in zip(("hand-over", "join"), one, five):
        print(f"{name}: {of_one} instructions with 1 worker, {of_five} with 5, {(of_five - of_one) / 4:g} per worker")
    assert 0 < sum(five) - sum(one), "nothing was counted"
    assert (sum(five) - sum(one)) / 4 <= most_instructions_per_worker
    assert sum(one) <= 2 * most_instructions_per_worker, "a loop costs too much before its first worker"


def check_system_calls() -> None:
    done = subprocess.run(EMULATOR + ["-strace", program, "2", "100"], capture_output=True, text=True, check=True)
    lines = done.stderr.splitlines()
    begin = next(i for i, line in enumerate(lines) if "write(1," in line)
    end = next(i for i, line in enumerate(lines) if i > begin and "write(1," in line)
    print(f"{end - begin - 1} system calls of any thread in 100 loops; {begin} before them")
    assert begin > 10, "the log has no calls"
    assert end == begin + 1, "\n".join(lines[begin:end + 1])


check_cost()
check_system_calls()
