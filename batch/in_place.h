// SPDX-License-Identifier: Apache-2.0
// The one question that every solver asks before it cuts a batch whose two arrays may be the same.
#pragma once
#include "interface/fft_plan.h"

// May the batch howmany[0] run item by item, or block by block, each piece read whole before it is written? Always so
// out of place. In place an item must write only where it reads itself, or where no item reads: then the pieces may
// run in any order and side by side. The answer is on the safe side: layouts that only exact sets could tell apart
// give false.
bool may_run_in_pieces(const fft_plan& plan);
