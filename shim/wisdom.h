// SPDX-License-Identifier: Apache-2.0
// What was planned, and with how much care: one line for each problem. Plans themselves aren't kept; the rules make the
// same plan again. All functions may be called by several threads at once.
#pragma once
#include "shim/plan.h"
#include "shim/text.h"

bool wisdom_knows(const problem& p, care c);
void wisdom_learns(const problem& p, care c);
void wisdom_export(text& t);

// Takes all of a text of wisdom_export() or, if anything in it is foreign or missing, nothing.
bool wisdom_import(const char* data, size_t size);
