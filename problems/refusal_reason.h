// SPDX-License-Identifier: Apache-2.0
// Why a planning call gives null, as a sentence with the numbers of the call: "inembed[1] = 4 is below n[1] = 8".
#pragma once
#include "interface/guru_arguments.h"
#include "interface/many_arguments.h"

#include <string>

// The first documented demand that the arguments fail; empty when they pass.
std::string many_reason(const many_arguments& arguments);
std::string guru_reason(const guru_arguments& arguments);

// Why a record whose arguments have passed can't be planned, before any solver is asked; empty when nothing stands
// against it.
std::string problem_reason(const fft_plan& problem);

// Why no solver took a problem that problem_reason has nothing against.
std::string unsolved_reason(const fft_plan& problem);

// The name of a kind of real-to-real transform, or its number when there is none.
std::string r2r_kind_name(uint32_t kind);
