# SPDX-License-Identifier: Apache-2.0
"""What instructions are and what they cost: disassembly by llvm-mc, prices by llvm-mca's scheduling model."""
import json
import re
import shutil
import subprocess
import sys
from dataclasses import dataclass, field

LOAD = re.compile(r"(ld|prf)")
STORE = re.compile(r"st")
FLOATING = re.compile(r"f(?!mov)|bf")
VECTOR_OPERAND = re.compile(r"\w+\s+[{\s]*[qzvd]\d")
BASE = re.compile(r"\[(sp|x\d+)")
WRITTEN = re.compile(r"(\w+)\s+(x\d+)(?:, (sp|x\d+))?")
NOT_MODELLED = re.compile(r"(svc|mrs|msr|hint|bti|udf|yield|(pac|aut|xpac)\w*)\b")
REGISTER = re.compile(r"\b([bhsdqxwzpv])\d+(?:\.(\d*)([bhsd]))?")
REGISTER_BYTES = {"b": 1, "h": 2, "s": 4, "d": 8, "q": 16, "x": 8, "w": 4, "z": 32, "p": 4}
KINDS = ("fp", "loads", "stores", "spill_loads", "spill_stores", "pointer_loads")
SHORT = 100             # instructions
STEADY = {True: (20, 40), False: (4, 12)}  # short code or not: the cycles between this many runs and that many
BATCH = 3000            # instructions per call of llvm-mca


def tool(name: str) -> str:
    for candidate in (name + "-19", name):
        if shutil.which(candidate):
            return candidate
    sys.exit(f"model: {name} is missing (package llvm-19)")


class Classifier:
    """The columns in which the instructions of a function count, asked in the order of their addresses. A spill is a
    vector register that goes to or comes from the stack, by the stack pointer or a register that was computed from it;
    the registers that a function must preserve for its caller are among them. A pointer load brings a general register
    back from the stack."""

    def __init__(self):
        self._stack = {"sp"}

    def kinds(self, instruction: str) -> list[str]:
        return self.kinds_and_bytes(instruction)[0]

    def kinds_and_bytes(self, instruction: str) -> tuple[list[str], int]:
        """The bytes are those of memory other than the stack."""
        base = BASE.search(instruction)
        on_stack = bool(base and base[1] in self._stack)
        vector = bool(VECTOR_OPERAND.match(instruction))
        self._follow(instruction)
        if LOAD.match(instruction):
            if on_stack:
                return ["loads", "spill_loads" if vector else "pointer_loads"], 0
            return ["loads"], 0 if instruction.startswith("prf") else bytes_moved(instruction)
        if STORE.match(instruction):
            return (["stores"] + ["spill_stores"] * vector, 0) if on_stack else (["stores"], bytes_moved(instruction))
        return ["fp"] if FLOATING.match(instruction) else [], 0

    def _follow(self, instruction: str) -> None:
        written = WRITTEN.match(instruction)
        if not written or STORE.match(instruction) or written[1] in ("cmp", "cmn", "tst", "cbz", "cbnz", "tbz", "tbnz"):
            return
        operation, register, source = written.groups()
        if operation in ("add", "sub", "mov", "addvl") and source in self._stack:
            self._stack.add(register)
        else:
            self._stack.discard(register)
            if operation == "ldp":
                self._stack.discard(source)


def bytes_moved(instruction: str) -> int:
    """What a load or store moves with all lanes active, 256-bit vectors assumed."""
    operands = instruction.split("[")[0].split("}")[0].split(None, 1)[1]  # the registers in front of the address
    replicated = re.match(r"ld1r(q?)([bhwd])", instruction)  # one element, or 16 bytes, to all lanes
    if replicated:
        return 16 if replicated[1] else {"b": 1, "h": 2, "w": 4, "d": 8}[replicated[2]]
    one_lane = re.search(r"}\[\d+\]", instruction)
    total = 0
    for kind, lanes, element in REGISTER.findall(operands):
        if kind == "v":
            total += REGISTER_BYTES[element] * (1 if one_lane or not lanes else int(lanes))
        else:
            total += REGISTER_BYTES[kind]
    return total


class Disassembler:
    def __init__(self):
        self._known: dict[int, str] = {}

    def learn(self, words) -> None:
        unknown = sorted(set(words) - self._known.keys())
        source = "".join(" ".join(f"0x{byte:02x}" for byte in word.to_bytes(4, "little")) + "\n" for word in unknown)
        done = subprocess.run([tool("llvm-mc"), "--disassemble", "-triple=aarch64", "-mattr=+all"], input=source,
                              capture_output=True, text=True)
        lines = [line.strip().replace("\t", " ") for line in done.stdout.splitlines()]
        lines = [line for line in lines if line and not line.startswith(".text")]
        if len(lines) != len(unknown):
            sys.exit("model: the disassembler doesn't know every instruction:\n" + done.stderr[:400])
        self._known.update(zip(unknown, lines))

    def __getitem__(self, word: int) -> str:
        return self._known[word]


@dataclass(frozen=True)
class Price:
    cycles: float
    bounds: dict[str, float] = field(default_factory=dict)  # cycles that each resource alone would need


def assembly(lines: list[str]) -> list[str]:
    """What the scheduling model can take. A last movprfx has lost the instruction that it belongs to; a plain move
    costs the same."""
    known = [line for line in lines if not NOT_MODELLED.match(line)] or ["nop"]
    if known[-1].startswith("movprfx"):
        registers = re.findall(r"\bz\d+", known[-1])
        known[-1] = f"mov {registers[0]}.d, {registers[-1]}.d"
    return known


GATHER = re.compile(r"ld1([dw]) \{ z(\d+)\.[ds] \}, p\d+/z, \[(x\d+), z\d+")
SCATTER = re.compile(r"st1([dw]) \{ z(\d+)\.[ds] \}, p\d+, \[(x\d+), z\d+")
SVE_STORE = re.compile(r"(?:st(?:nt)?1[bhwd] \{ z(\d+)\.[bhsd] \}, p\d+|str z(\d+)), \[(x\d+|sp)")


def without_favours(code: list[str]) -> list[str]:
    """The same code where the model is kind: a gather or scatter is one access for each element and a shuffle for every
    two, and the data of an SVE store goes through the pipes of SVE operations, which a 128-bit store uses too."""
    apart = []
    for line in code:
        if gather := GATHER.match(line):
            elements, register, base = 4 if gather[1] == "d" else 8, gather[2], gather[3]
            apart += [f"ldr d{register}, [{base}]"] * elements
            apart += [f"zip1 z{register}.d, z{register}.d, z{register}.d"] * (elements // 2)
        elif scatter := SCATTER.match(line):
            elements, register, base = 4 if scatter[1] == "d" else 8, scatter[2], scatter[3]
            apart += [f"zip1 z31.d, z{register}.d, z{register}.d"] * (elements // 2)
            apart += [f"str d{register}, [{base}]"] * elements
        elif store := SVE_STORE.match(line):
            apart.append(f"str q{store[1] or store[2]}, [{store[3]}]")
        else:
            apart.append(line)
    return apart


class Machine:
    """Prices straight code, by its steady state or as one run from start to end. Equal code is priced once."""

    def __init__(self, cpu: str):
        self.cpu = cpu
        self._steady: dict[tuple[str, ...], Price] = {}

    def steady_prices(self, codes: list[list[str]]) -> list[Price]:
        keys = [tuple(code) for code in codes]
        unknown = list(dict.fromkeys(key for key in keys if key not in self._steady))
        for short in (True, False):
            self._learn([key for key in unknown if (len(key) <= SHORT) == short], STEADY[short])
        return [self._steady[key] for key in keys]

    def _learn(self, keys: list[tuple[str, ...]], iterations: tuple[int, int]) -> None:
        while keys:
            batch, size = [], 0
            while keys and (not batch or size + len(keys[-1]) <= BATCH):
                batch.append(keys.pop())
                size += len(batch[-1])
            few, many = (self._simulate(batch, count) for count in iterations)
            for key, short, long in zip(batch, few, many):
                cycles = long["SummaryView"]["TotalCycles"] - short["SummaryView"]["TotalCycles"]
                self._steady[key] = Price(cycles / (iterations[1] - iterations[0]), self._bounds(long))

    def cycles_once(self, code: list[str]) -> int:
        report = self._run_mca([code], ["-iterations=1", "-instruction-info=0", "-resource-pressure=0"])
        return int(re.search(r"Total Cycles:\s+(\d+)", report).group(1))

    def _simulate(self, codes, iterations: int) -> list[dict]:
        answer = json.loads(self._run_mca(codes, [f"-iterations={iterations}", "-json"]))
        self._resources = answer["TargetInfo"]["Resources"]
        return answer["CodeRegions"]

    def _run_mca(self, codes, options: list[str]) -> str:
        """Each code is a region of its own. A call costs the branch: what is called is counted by itself."""
        source = []
        for number, code in enumerate(codes):
            source += [f"# LLVM-MCA-BEGIN {number}", *assembly(list(code)), f"# LLVM-MCA-END {number}"]
        command = [tool("llvm-mca"), "-mtriple=aarch64", "-mattr=+all", f"-mcpu={self.cpu}", "-call-latency=1", *options]
        done = subprocess.run(command, input="\n".join(source) + "\n", capture_output=True, text=True)
        if done.returncode:
            sys.exit("model: llvm-mca failed:\n" + done.stderr[:1000])
        return done.stdout

    def _bounds(self, region: dict) -> dict[str, float]:
        """For each kind of resource the use of its busiest unit, and the dispatch width."""
        summary = region["SummaryView"]
        total_row = len(region["Instructions"])
        bounds = {"dispatch": summary["TotaluOps"] / summary["Iterations"] / summary["DispatchWidth"]}
        for use in region["ResourcePressureView"]["ResourcePressureInfo"]:
            if use["InstructionIndex"] == total_row:
                kind = resource_kind(self._resources[use["ResourceIndex"]])
                bounds[kind] = max(bounds.get(kind, 0), use["ResourceUsage"])
        return bounds


def resource_kind(name: str) -> str:
    """V1UnitL01.1 and its like, of any model of this family, to the word that tables use."""
    letter = re.sub(r".*Unit", "", name)[:1]
    return {"V": "vector", "L": "memory", "D": "store data", "S": "integer", "M": "integer", "I": "integer",
            "B": "branch"}.get(letter, name)
