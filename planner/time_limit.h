// SPDX-License-Identifier: Apache-2.0
#pragma once

// Seconds after which measured planning starts no further timing. Less than 1e-10 means no limit.
extern double planning_time_limit;
