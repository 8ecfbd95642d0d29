# SPDX-License-Identifier: Apache-2.0
"""Names for addresses: the symbol tables of the mapped files, hidden and local functions included."""
import bisect
import os
import subprocess

from machine import tool


class Symbols:
    def __init__(self, files: list[tuple[int, int, int, str]]):
        self._files = sorted(files)
        self._starts = [file[0] for file in self._files]
        self._bases: dict[str, int] = {}  # where offset 0 of a file lies
        for start, _, offset, path in self._files:
            if path not in self._bases:
                self._bases[path] = start - offset if movable(path) else 0
        self._tables: dict[str, list[tuple[int, int, str]]] = {}

    def file(self, address: int) -> str:
        index = bisect.bisect_right(self._starts, address) - 1
        return self._files[index][3] if index >= 0 and address < self._files[index][1] else ""

    def name(self, address: int) -> str:
        """The function that holds the address, else the file's name and an offset."""
        path = self.file(address)
        if not path:
            return f"{address:#x}"
        if path not in self._tables:
            self._tables[path] = read_functions(path)
        offset = address - self._bases[path]
        table = self._tables[path]
        index = bisect.bisect_right(table, (offset, 1 << 64, "")) - 1
        if index >= 0 and offset < table[index][0] + table[index][1]:
            return table[index][2]
        return f"{os.path.basename(path)}+{offset:#x}"


def movable(path: str) -> bool:
    """Shared objects and most programs run at another address than they were linked for."""
    try:
        with open(path, "rb") as elf:
            return elf.read(18)[16:18] != b"\x02\x00"  # ET_EXEC
    except OSError:
        return True


def read_functions(path: str) -> list[tuple[int, int, str]]:
    """Address, size and name of each function. A stripped file still tells where its functions begin, by its
    unwinding table; they get the address for a name."""
    table = {}
    for dynamic in ([], ["-D"]):
        done = subprocess.run([tool("llvm-nm"), "-S", "-C", "--defined-only", *dynamic, path], capture_output=True,
                              text=True)
        for line in done.stdout.splitlines():
            fields = line.split(None, 3)
            if len(fields) == 4 and fields[2] in "tTwW":
                table.setdefault(int(fields[0], 16), (int(fields[1], 16), fields[3]))
    done = subprocess.run([tool("llvm-dwarfdump"), "--eh-frame", path], capture_output=True, text=True)
    for line in done.stdout.splitlines():
        if " FDE " in line and "pc=" in line:
            low, high = (int(text, 16) for text in line.rsplit("pc=", 1)[1].split("..."))
            table.setdefault(low, (high - low, f"{os.path.basename(path)}+{low:#x}"))
    return sorted((address, size, name) for address, (size, name) in table.items())
