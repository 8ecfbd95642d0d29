// SPDX-License-Identifier: Apache-2.0
// The one question that every solver asks before it cuts a batch whose two arrays may be the same.
#pragma once
#include "record/fft_plan.h"

// May the batch howmany[0] run item by item, or block by block, each piece read whole before it is written? Always so
// out of place. In place an item must write only where it reads itself, or where no item reads: then the pieces may
// run in any order and side by side. The answer is on the safe side: layouts that only exact sets could tell apart
// give false.
bool may_run_in_pieces(const fft_plan& plan);

// Items that run in ascending order in place, in groups of `group` that are read whole before they are written, and
// what is left of the count one by one. May they, with two different distances, because none of them reaches an input
// that is still to be read? An item that doesn't read everything first must lie off its own input too.
struct ascending_run {
    int64_t group;
    bool reads_first;
};
bool may_run_ascending(const fft_plan& plan, const ascending_run& run);
