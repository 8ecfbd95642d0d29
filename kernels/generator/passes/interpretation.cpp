// SPDX-License-Identifier: Apache-2.0
#include "kernels/generator/passes/interpretation.h"

#include <cstdio>
#include <cstdlib>

namespace generator {

namespace {

constexpr number i_unit{0, 1};

class interpreter {
public:
    interpreter(const body& b, int lanes, const graph_source& load, const graph_source& twiddle)
        : graph_(b.graph), lanes_(lanes), load_(load), twiddle_(twiddle), values_(b.graph.nodes().size()) {
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
        } else {
            const graph_vector &a = values_[v.a], &b = v.b == none ? a : values_[v.b];
            if (exchange(v, a, b, result)) return;
            for (int c = 0; c < lanes_; ++c) result[c] = arithmetic(v, a[c], b[c], c);
        }
    }

    // False for an operation that keeps to the lanes.
    bool exchange(const node& v, const graph_vector& a, const graph_vector& b, graph_vector& result) const {
        const op what = v.what;
        switch (what) {
            case op::zip_lo:
            case op::interleave_lo:
                for (int c = 0; c < lanes_; ++c) result[c] = (c % 2 ? b : a)[c / 2];
                return true;
            case op::zip_hi:
            case op::interleave_hi:
                for (int c = 0; c < lanes_; ++c) result[c] = (c % 2 ? b : a)[lanes_ / 2 + c / 2];
                return true;
            case op::evens:
                result = {a[0], a[2], b[0], b[2]};
                return true;
            case op::odds:
                result = {a[1], a[3], b[1], b[3]};
                return true;
            case op::swap_halves:
                result = {a[2], a[3], a[0], a[1]};
                return true;
            case op::swap_pairs:
                result = {a[1], a[0], a[3], a[2]};
                return true;
            case op::add_i:
            case op::sub_i:
                if (!is_of_real_data()) return false;
                result = turned_sum(a, b, what == op::add_i ? 1 : -1);
                return true;
            case op::fma_i:
                if (!is_of_real_data()) return false;
                for (int c = 0; c < lanes_; ++c) result[c] = constant_of(v, c) * b[c];
                result = turned_sum(a, result, 1);
                return true;
            default:
                return false;
        }
    }

    // Kernels of real data have no complex lanes: their complex numbers take two lanes each.
    bool is_of_real_data() const { return graph_.constants().grows(); }

    static graph_vector turned_sum(const graph_vector& a, const graph_vector& b, double sign) {
        return {a[0] - sign * b[1], a[1] + sign * b[0], a[2] - sign * b[3], a[3] + sign * b[2]};
    }

    number arithmetic(const node& v, number a, number b, int lane) const {
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
                return scaled(v, a, lane);
            case op::fma:
                return a + scaled(v, b, lane);
            case op::fms:
                return a - scaled(v, b, lane);
            case op::fma_i:
                return a + constant_of(v, lane) * i_unit * b;
            case op::fms_i:
                return a - constant_of(v, lane) * i_unit * b;
            case op::twice_minus:
                return 2.0 * a - b;
            case op::neg:
                return -a;
            case op::reload:
                return a;
            default:
                std::fprintf(stderr, "the interpretation lacks %s\n", operation_of(v.what).word);
                std::abort();
        }
    }

    number scaled(const node& v, number x, int lane) const {
        return v.k == conjugating ? std::conj(x) : constant_of(v, lane) * x;
    }

    // A rotated product reads the odd lanes of a pair, whatever lane the graph names.
    double constant_of(const node& v, int lane) const {
        constant k = v.k;
        if (is_lanes(k)) {
            const int place = is_of_real_data() ? lane : 2 * lane + 1;  // both floats of a complex lane are the same
            return double(graph_.constants().lanes()[k.entry - first_lanes_entry][place].value());
        }
        if (constants_of(v.what) == constant_from::odd_lane && !k.everywhere) k.lane = 1;
        return double(graph_.constants().value(k).value());
    }

    const dag& graph_;
    int lanes_;
    const graph_source &load_, &twiddle_;
    std::vector<graph_vector> values_;
};

}  // namespace

std::map<int, graph_vector> interpret(const body& b, int lanes, const graph_source& load, const graph_source& twiddle) {
    return interpreter(b, lanes, load, twiddle).outputs;
}

}  // namespace generator
