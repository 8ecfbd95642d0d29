// SPDX-License-Identifier: Apache-2.0
#include "reshape_support.h"

#include <gtest/gtest.h>
