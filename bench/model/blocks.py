# SPDX-License-Identifier: Apache-2.0
"""Joins the emulator's pieces to basic blocks."""
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
    """The emulator cuts straight code at pages and after some hundred instructions. A piece that ends in no branch is
    joined with the piece behind it where both ran equally often."""
    at = {}
    for number, count in region.counts.items():
        piece = profile.pieces[number]
        at[piece.address] = Block(piece.address, count, tuple(piece.words))
    joined = []
    for address in sorted(at):
        if address not in at:
            continue  # it was joined to an earlier one
        block = at.pop(address)
        words = list(block.words)
        while not is_branch(words[-1]):
            follower = at.get(address + 4 * len(words))
            if follower is None or follower.count != block.count:
                break
            words += at.pop(follower.address).words
        joined.append(Block(address, block.count, tuple(words)))
    return joined
