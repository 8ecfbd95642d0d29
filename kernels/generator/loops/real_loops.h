// SPDX-License-Identifier: Apache-2.0
// The kernels of real data as text: addresses come from tables of offsets, rows lie any distance apart.
#pragma once
#include <string>
#include <vector>

#include "kernels/generator/forms/forms.h"
#include "kernels/generator/graph/pool.h"
#include "kernels/generator/emit/text.h"

namespace generator {

std::string real_kernel_parameters(const form& f);
text real_kernel_text(const form& f, int size);

// The constants of a kernel, which stand in a unit of their own.
struct named_pool {
    std::string name;
    bool in_double;
    pool numbers;
};
std::vector<named_pool> real_pools(const form& f, int size);

}  // namespace generator
