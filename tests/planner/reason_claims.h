// SPDX-License-Identifier: Apache-2.0
// Whether what a reason says is so: every "EXPRESSION = NUMBER" is worked out from the numbers of the call, and every
// comparison ("is below", "is above", "is not below", "is not above", "is not") is held against its two sides.
#pragma once
#include <cstdint>
#include <map>
#include <string>

using call_numbers = std::map<std::string, int64_t>;  // "n[1]", "dims[0].is", "howmany" and so on

// Empty when all claims are true and there is at least one; else what is wrong.
std::string false_claim(const std::string& reason, const call_numbers& numbers);
