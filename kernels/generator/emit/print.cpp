// SPDX-License-Identifier: Apache-2.0
#include "kernels/generator/emit/print.h"

#include <algorithm>
#include <map>
#include <set>
#include <utility>

namespace generator {

namespace {

std::string name(const dag& g, int n) {
    return g.nodes()[n].what == op::twiddle ? "w" + std::to_string(g.nodes()[n].slot) : "t" + std::to_string(n);
}

// A constant that is loaded where it is used stays in its register for this many operations.
constexpr int most_operations_apart = 64;

// Registers of constants: a pair of the pool in every complex place, or, where lanes are all that is asked for, two
// pairs in one register; or one number everywhere.
class constant_registers {
public:
    explicit constant_registers(const body& b) : body_(b) {
        for (int n : b.order) {
            const node& v = b.graph.nodes()[n];
            if (constants_of(v.what) == constant_from::odd_lane && !v.k.everywhere) pairs_.insert(v.k.entry);
        }
        for (int n : b.order) use(b.graph.nodes()[n]);
    }

    bool in_pool_pairs(const constant& k) const { return !k.everywhere && !pairs_.contains(k.entry); }
    int lane(const constant& k) const { return in_pool_pairs(k) ? k.entry % 2 * 2 + k.lane : k.lane; }

    // What the text of an operation says for a constant.
    std::string operand(const constant& k) const {
        if (is_lanes(k)) return "constants(pool + " + std::to_string(body_.graph.constants().lanes_offset(k)) + ")";
        return is_held(k) ? name(k) : fresh_name(name(k));
    }

    // Loads the constant of an operation, the one of number `at`, unless it is held or was used a little before.
    void load(text& out, const constant& k, int at) {
        if (k.entry == constant::none || is_lanes(k) || is_held(k)) return;
        const auto [use, first] = uses_.try_emplace(name(k));
        if (first || at - use->second.last > most_operations_apart) {
            ++use->second.loads;
            out.line("const ", in_pool_pairs(k) ? "pool_pairs " : "vec ", fresh_name(name(k)), " = ", loaded(k), ";",
                     meaning(k));
        }
        use->second.last = at;
    }

    void declare(text& out) const {
        for (const auto& [text_name, k] : used_) {
            if (is_literal(k) && body_.crowded)
                out.line("static constexpr float ", text_name, "_in_memory = ", k == two ? "2.0f;" : "0.5f;");
            if (!is_held(k)) continue;
            const std::string number = is_held(halved(k)) ? name(halved(k)) : loaded(halved(k));
            const std::string made = k.doublings > 0 ? "add(" + number + ", " + number + ")" : loaded(k);
            out.line("const ", in_pool_pairs(k) ? "pool_pairs " : "vec ", text_name, " = ", made, ";", meaning(k));
        }
    }

private:
    static constant halved(constant k) {
        k.doublings = std::max(k.doublings - 1, 0);
        return k;
    }

    std::string fresh_name(const std::string& name) const { return name + "_" + std::to_string(uses_.at(name).loads); }

    bool is_held(const constant& k) const {
        return k.doublings > 0 || (is_literal(k) ? !body_.crowded : !body_.once && !body_.crowded);
    }

    std::string name(const constant& k) const {
        if (k == two) return "two";
        if (k == one_half) return "one_half";
        if (k == conjugating) return "signs";
        const std::string times = k.doublings > 0 ? "_times" + std::to_string(1 << k.doublings) : "";
        if (in_pool_pairs(k)) return "q" + std::to_string(k.entry / 2) + times;
        std::string s = (k.everywhere ? "u" : "k") + std::to_string(k.entry);
        if (k.everywhere) s += k.lane ? "s" : "c";
        return s + times;
    }

    std::string loaded(const constant& k) const {
        if (is_literal(k) && body_.crowded) return "same(" + name(k) + "_in_memory)";
        if (k == two) return "same(2.0f)";
        if (k == one_half) return "same(0.5f)";
        if (k == conjugating) return "conjugation()";
        if (k.everywhere) return "same(pool[" + std::to_string(2 * k.entry + k.lane) + "])";
        if (in_pool_pairs(k)) return "two_constants(pool + " + std::to_string(k.entry / 2 * 4) + ")";
        return "constant(pool + " + std::to_string(2 * k.entry) + ")";
    }

    std::string meaning(const constant& k) const {
        if (is_literal(k) || k.doublings > 0) return "";
        if (in_pool_pairs(k)) return "  // " + meaning(k.entry / 2 * 2) + ", " + meaning(k.entry / 2 * 2 + 1);
        return "  // " + meaning(k.entry);
    }
    std::string meaning(int entry) const {
        const auto& entries = body_.graph.constants().entries();
        return entry < int(entries.size()) ? entries[entry].meaning : "-";
    }

    void use(const node& v) {
        if (v.what == op::twice_minus) used_.emplace("two", two);
        if (v.k.entry == constant::none || is_lanes(v.k)) return;
        for (constant k = v.k;; k = halved(k)) {
            used_.emplace(name(k), k);
            if (k.doublings == 0) return;
        }
    }

    const body& body_;
    std::set<int> pairs_;
    std::map<std::string, constant> used_;
    struct recent_use {
        int last = 0, loads = 0;
    };
    std::map<std::string, recent_use> uses_;  // of constants that aren't held
};

std::string place_in_memory(int n) { return "kept_t" + std::to_string(n); }

std::string expression(const dag& g, int n, const access& a, const constant_registers& constants) {
    const node& v = g.nodes()[n];
    if (v.what == op::load) return a.load(v.slot);
    if (v.what == op::reload) return "reload(" + place_in_memory(v.a) + ")";
    std::string s = operation_of(v.what).word;
    if (constants_of(v.what) == constant_from::any_lane)
        s += v.k.everywhere ? "_all" : "<" + std::to_string(constants.lane(v.k)) + ">";
    if (v.into_b) s += "_into_b";
    s += "(" + name(g, v.a);
    if (v.b != none) s += ", " + name(g, v.b);
    if (v.k.entry != constant::none) s += ", " + constants.operand(v.k);
    if (v.what == op::twice_minus) s += ", " + constants.operand(two);
    return s + ")";
}

void print_twiddle(text& out, int slot, const access& a) {
    out.line("const ", a.twiddle_type, " w", slot, " = ", a.twiddle(slot), ";");
}

}  // namespace

void take_row_twiddles(access& a) {
    a.twiddle = [](int j) { return "load_row(w + " + std::to_string(2 * (j - 1)) + ")"; };
    a.twiddle_type = "row_twiddle";
}

void print_constants(text& out, const body& b) { constant_registers(b).declare(out); }

void print_twiddles(text& out, const body& b, const access& a) {
    for (const node& v : b.graph.nodes())
        if (v.what == op::twiddle) print_twiddle(out, v.slot, a);
}

void print_operations(text& out, const body& b, const access& a) {
    out.printed.push_back(std::make_shared<const body>(b));
    constant_registers constants(b);
    bool stored = false;
    std::set<int> in_memory;
    for (int n : b.order)
        if (b.graph.nodes()[n].what == op::reload) in_memory.insert(b.graph.nodes()[n].a);
    for (int at = 0; at < int(b.order.size()); ++at) {
        const int n = b.order[at];
        const node& v = b.graph.nodes()[n];
        constants.load(out, v.what == op::twice_minus ? two : v.k, at);
        if (v.what == op::twiddle) {
            if (!a.twiddles_held) print_twiddle(out, v.slot, a);
        } else if (v.what == op::store) {
            if (!std::exchange(stored, true)) a.before_stores(out);
            out.line(a.store(v.slot, name(b.graph, v.a)), ";");
        } else
            out.line("const vec ", name(b.graph, n), " = ", expression(b.graph, n, a, constants), ";");
        if (in_memory.contains(n)) out.line("const in_memory ", place_in_memory(n), "{", name(b.graph, n), "};");
    }
}

}  // namespace generator
