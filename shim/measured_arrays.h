// SPDX-License-Identifier: Apache-2.0
#pragma once
#include "shim/plan.h"

// Zeroed arrays of a problem's layout, in place as it is, for measuring. False when memory is short or the two sides
// meet otherwise than whole.
class measured_arrays {
public:
    explicit measured_arrays(const problem& p);
    ~measured_arrays();
    measured_arrays(const measured_arrays&) = delete;
    measured_arrays& operator=(const measured_arrays&) = delete;
    explicit operator bool() const { return complete_; }
    const arrays& get() const { return own_; }

private:
    arrays own_ = {};
    bool complete_;
};
