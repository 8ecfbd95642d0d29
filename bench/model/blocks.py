# SPDX-License-Identifier: Apache-2.0
"""Basic blocks from the emulator's pieces."""
from dataclasses import dataclass

from emulation import Profile, Region


@dataclass
class Block:
    address: int
    count: int
    words: tuple[int, ...]


def is_branch(word: int) -> bool:
    return (word & 0x7C000000 == 0x14000000      # b, bl
            or word & 0xFF000000 == 0x54000000   # b.cond
            or word & 0x7C000000 == 0x34000000   # cbz, cbnz, tbz, tbnz
            or word & 0xFE000000 == 0xD6000000)  # br, blr, ret


def basic_blocks(profile: Profile, region: Region) -> list[Block]:
    """The emulator cuts code where a page ends or a piece gets long, and pieces overlap where code is entered at several
    points. So the pieces are first dissolved into the count of each instruction; a block is then a longest run of
    instructions that follow each other, ran equally often and have no branch before the last."""
    words, counts = {}, {}
    for number, count in region.counts.items():
        piece = profile.pieces[number]
        for index, word in enumerate(piece.words):
            address = piece.address + 4 * index
            words[address] = word
            counts[address] = counts.get(address, 0) + count
    blocks, run = [], []
    for address in sorted(words):
        if run and (address != run[-1] + 4 or counts[address] != counts[run[-1]] or is_branch(words[run[-1]])):
            blocks.append(run)
            run = []
        run.append(address)
    if run:
        blocks.append(run)
    return [Block(run[0], counts[run[0]], tuple(words[address] for address in run)) for run in blocks]
