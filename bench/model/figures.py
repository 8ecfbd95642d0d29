# SPDX-License-Identifier: Apache-2.0
"""From counted blocks to the figures of a region, as a whole and per function."""
from dataclasses import dataclass, field

from blocks import Block, basic_blocks
from emulation import Profile, Region
from machine import KINDS, Classifier, Disassembler, Machine, Price, without_favours
from symbols import Symbols


BYTES = ("loaded_bytes", "stored_bytes")  # the stack left out


@dataclass
class Figures:
    """Per execution. `cycles` are the model's own, `cautious` those without its favours. `limited` and `limited_cautious`
    tell how they divide by what bounds the blocks; `waiting` are those in which no resource was full: results were
    awaited."""
    cycles: float = 0
    cautious: float = 0
    instructions: float = 0
    counts: dict[str, float] = field(default_factory=lambda: dict.fromkeys(KINDS + BYTES, 0.0))
    limited: dict[str, float] = field(default_factory=dict)
    limited_cautious: dict[str, float] = field(default_factory=dict)

    def add(self, times: float, classified: list[tuple[list[str], int]], price: Price, cautious: Price) -> None:
        self.cycles += times * price.cycles
        self.cautious += times * cautious.cycles
        self.instructions += times * len(classified)
        for kinds, moved in classified:
            for kind in kinds:
                self.counts[kind] += times
            if moved:
                self.counts[BYTES["stores" in kinds]] += times * moved
        divide(self.limited, times, price)
        divide(self.limited_cautious, times, cautious)

    def as_dict(self) -> dict:
        return {"cycles": round(self.cycles, 2), "cautious": round(self.cautious, 2),
                "instructions": round(self.instructions, 2),
                **{name: round(count, 2) for name, count in self.counts.items()},
                "bound": shares(self.limited), "bound_cautious": shares(self.limited_cautious)}


def divide(limited: dict[str, float], times: float, price: Price) -> None:
    bound = max(price.bounds, key=price.bounds.get)
    full = min(price.bounds[bound], price.cycles)
    limited[bound] = limited.get(bound, 0) + times * full
    limited["waiting"] = limited.get("waiting", 0) + times * (price.cycles - full)


def shares(limited: dict[str, float]) -> str:
    """What bounds it, the largest share first, small ones left out."""
    whole = sum(limited.values())
    ordered = sorted(((cycles / whole, name) for name, cycles in limited.items()), reverse=True)
    return " ".join(f"{name} {100 * share:.0f}%" for share, name in ordered if share >= 0.05)


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
        prices = self._machine.steady_prices(codes)
        cautious_prices = self._machine.steady_prices([without_favours(code) for code in codes])
        total, functions, classifiers, priced = Figures(), {}, {}, []
        for block, code, price, cautious in zip(blocks, codes, prices, cautious_prices):
            times = block.count / executions
            name = self._symbols.name(block.address)
            classifier = classifiers.setdefault(name, Classifier())
            classified = [classifier.kinds_and_bytes(instruction) for instruction in code]
            for figures in (total, functions.setdefault(name, Figures())):
                figures.add(times, classified, price, cautious)
            priced.append((block, times * price.cycles, name))
        return RegionFigures(total, functions, priced, self._traced(region, executions))

    def _traced(self, region: Region, executions: float) -> float | None:
        """The cycles of the instructions in the order in which they ran, one run from start to end."""
        if region.trace is None:
            return None
        pieces = self._profile.pieces
        code = [self._code[word] for number in region.trace for word in pieces[number].words]
        return self._machine.cycles_once(code) / executions
