// SPDX-License-Identifier: Apache-2.0
// Indented lines of generated source, and what they were made from.
#pragma once
#include <memory>
#include <sstream>
#include <string>
#include <vector>

#include "kernels/generator/graph/pool.h"

namespace generator {

struct body;
using bodies = std::vector<std::shared_ptr<const body>>;

// The constants of one kernel alone, which stand in a unit of their own.
struct named_pool {
    std::string name;
    bool in_double;
    pool numbers;
};

class text {
public:
    template <class... Parts>
    void line(const Parts&... parts) {
        std::ostringstream s;
        (s << ... << parts);
        if (s.str().starts_with("}")) --depth_;
        out_ += std::string(4 * depth_, ' ') + s.str() + "\n";
        if (s.str().ends_with("{")) ++depth_;
    }
    void blank() { out_ += "\n"; }
    void append(const std::string& lines) { out_ += lines; }
    const std::string& str() const { return out_; }

    // The bodies that lines were printed from, in the order of the lines, and the pools that they name.
    bodies printed;
    std::vector<named_pool> pools;

    void declare_pool(const named_pool& p) {
        for (const named_pool& known : pools)
            if (known.name == p.name) return;
        pools.push_back(p);
    }

private:
    std::string out_;
    int depth_ = 0;
};

}  // namespace generator
