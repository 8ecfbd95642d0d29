// SPDX-License-Identifier: Apache-2.0
#pragma once
#include <vector>

#include "picture.h"

// The power of every bin, for one piece of the recording after the other.
using spectrum_over_time = std::vector<std::vector<double>>;

// Time runs to the right, frequency upward to half the sampling rate, colour tells the power in decibels below the
// loudest bin.
picture draw(const spectrum_over_time& spectrum, double seconds_per_piece, double sampling_rate);
