// SPDX-License-Identifier: Apache-2.0
#include "interpreter.h"

#include <cstdio>
#include <cstdlib>

#include "graph_checks.h"

namespace {

using namespace generator;

constexpr number i_unit{0, 1};

class interpreter {
public:
    interpreter(const body& b, const graph_source& load, const graph_source& twiddle)
        : graph_(b.graph), load_(load), twiddle_(twiddle), values_(b.graph.nodes().size()) {
        for (int n : b.order) run(graph_.nodes()[n], values_[n]);
    }

    std::map<int, graph_vector> outputs;

private:
    void run(const node& v, graph_vector& result) {
        if (v.what == op::load) {
            result = load_(v.slot);
        } else if (v.what == op::twiddle) {
            result = twiddle_(v.slot);
        } else if (v.what == op::store) {
            outputs[v.slot] = values_[v.a];
        } else if (v.what == op::zip_lo || v.what == op::zip_hi) {
            const int from = v.what == op::zip_hi;
            result = {{values_[v.a].lane[from], values_[v.b].lane[from]}};
        } else {
            for (int c = 0; c < graph_lanes; ++c)
                result.lane[c] = arithmetic(v, values_[v.a].lane[c], v.b == none ? number{} : values_[v.b].lane[c]);
        }
    }

    number arithmetic(const node& v, number a, number b) const {
        switch (v.what) {
            case op::mul:
                return a * b;
            case op::add:
                return a + b;
            case op::sub:
                return a - b;
            case op::add_i:
                return a + i_unit * b;
            case op::sub_i:
                return a - i_unit * b;
            case op::scale:
                return constant_of(v) * a;
            case op::fma:
                return a + constant_of(v) * b;
            case op::fms:
                return a - constant_of(v) * b;
            case op::fma_i:
                return a + constant_of(v) * i_unit * b;
            case op::fms_i:
                return a - constant_of(v) * i_unit * b;
            case op::twice_minus:
                return 2.0 * a - b;
            default:
                std::fprintf(stderr, "interpreter: operation %d is unknown\n", int(v.what));
                std::abort();
        }
    }

    // A rotated product reads the odd lanes of a pair, whatever lane the graph names.
    double constant_of(const node& v) const {
        constant k = v.k;
        if (is_turned_product(v.what) && !k.everywhere) k.lane = 1;
        return double(graph_.constants().value(k));
    }

    const dag& graph_;
    const graph_source &load_, &twiddle_;
    std::vector<graph_vector> values_;
};

}  // namespace

std::map<int, graph_vector> interpret(const body& b, const graph_source& load, const graph_source& twiddle) {
    return interpreter(b, load, twiddle).outputs;
}
