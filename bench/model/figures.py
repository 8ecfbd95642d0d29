# SPDX-License-Identifier: Apache-2.0
"""From counted blocks to the figures of a region, as a whole and per function."""
from dataclasses import dataclass, field

from blocks import Block, basic_blocks
from emulation import Profile, Region
from machine import KINDS, Classifier, Disassembler, Machine
from symbols import Symbols


BYTES = ("loaded_bytes", "stored_bytes")  # the stack left out


@dataclass
class Figures:
    """Per execution. `limits` are the cycles that each resource alone would need; `limited` tells how the cycles
    divide by what bounds the blocks; `waiting` are those in which no resource was full: results were awaited."""
    cycles: float = 0
    instructions: float = 0
    counts: dict[str, float] = field(default_factory=lambda: dict.fromkeys(KINDS + BYTES, 0.0))
    limited: dict[str, float] = field(default_factory=dict)

    def add(self, times: float, classified: list[tuple[list[str], int]], price) -> None:
        self.cycles += times * price.cycles
        self.instructions += times * len(classified)
        for kinds, moved in classified:
            for kind in kinds:
                self.counts[kind] += times
            if moved:
                self.counts[BYTES["stores" in kinds]] += times * moved
        bound = max(price.bounds, key=price.bounds.get)
        full = min(price.bounds[bound], price.cycles)
        self.limited[bound] = self.limited.get(bound, 0) + times * full
        self.limited["waiting"] = self.limited.get("waiting", 0) + times * (price.cycles - full)

    def shares(self) -> str:
        """What bounds it, the largest share first, small ones left out."""
        shares = sorted(((cycles / self.cycles, name) for name, cycles in self.limited.items()), reverse=True)
        return " ".join(f"{name} {100 * share:.0f}%" for share, name in shares if share >= 0.05)

    def as_dict(self) -> dict:
        return {"cycles": round(self.cycles, 2), "instructions": round(self.instructions, 2),
                **{name: round(count, 2) for name, count in self.counts.items()}, "bound": self.shares()}


@dataclass
class RegionFigures:
    total: Figures
    functions: dict[str, Figures]
    blocks: list[tuple[Block, float, str]]  # block, cycles per execution, function
    traced_cycles: float | None


class Analysis:
    def __init__(self, profile: Profile, machine: Machine):
        self._profile = profile
        self._machine = machine
        self._symbols = Symbols(profile.files)
        self._code = Disassembler()
        self._code.learn(word for piece in profile.pieces.values() for word in piece.words)

    def region(self, region: Region, executions: float) -> RegionFigures:
        blocks = basic_blocks(self._profile, region)
        codes = [[self._code[word] for word in block.words] for block in blocks]
        total, functions, classifiers, priced = Figures(), {}, {}, []
        for block, code, price in zip(blocks, codes, self._machine.steady_prices(codes)):
            times = block.count / executions
            name = self._symbols.name(block.address)
            classifier = classifiers.setdefault(name, Classifier())
            classified = [classifier.kinds_and_bytes(instruction) for instruction in code]
            for figures in (total, functions.setdefault(name, Figures())):
                figures.add(times, classified, price)
            priced.append((block, times * price.cycles, name))
        return RegionFigures(total, functions, priced, self._traced(region, executions))

    def _traced(self, region: Region, executions: float) -> float | None:
        """The cycles of the instructions in the order in which they ran, one run from start to end."""
        if region.trace is None:
            return None
        pieces = self._profile.pieces
        code = [self._code[word] for number in region.trace for word in pieces[number].words]
        return self._machine.cycles_once(code) / executions
