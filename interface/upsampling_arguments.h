// SPDX-License-Identifier: Apache-2.0
#pragma once

struct upsampling_arguments {
    int n0, n1;  // source image
    int m0, m1;  // target image
};

// The first documented demand that the sizes fail, or null when the call may go on.
const char* upsampling_refusal(const upsampling_arguments& arguments);
