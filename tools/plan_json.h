// SPDX-License-Identifier: Apache-2.0
// A plan, or the reason why there is none, as one line of JSON.
#pragma once
#include "problems/explained_plan.h"

#include <string>

// {"words", "planned": true, "owned_bytes", "execution_bytes", "operations", "plan": {"problem", "solver", "execute",
// "radices", "buffer_bytes", "aux_bytes", "subplans": [...]}} or {"words", "planned": false, "reason"}. Members of
// `subplans` that are equal and follow each other are one with a "count". "runs" follows "execute" where that name
// doesn't tell what really runs.
std::string plan_json(const std::string& words, const explained_plan& plan);
