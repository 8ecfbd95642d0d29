// SPDX-License-Identifier: Apache-2.0
// ledger.txt: the operations of every kernel body, one line each, as the generator records them. To make it anew after
// a change of a butterfly, an order or a family:
//     build/host/tests/kernels/test_ledger --update
// and read the difference as you would read code: a number that grew is a price that someone must want to pay.
#include <gtest/gtest.h>

#include <fstream>
#include <iomanip>
#include <sstream>

#include "graph_checks.h"

namespace {

using namespace generator;

constexpr const char* head =
    "# Operations of one turn of each kernel's loop, by the generator's graph: vectors loaded and stored, twiddles\n"
    "# loaded, additions (plain, and with a quarter turn), multiplications by a constant, fused multiply-adds (plain,\n"
    "# and with a quarter turn), multiplications by a twiddle, lane exchanges; pairs of constants; the most vectors\n"
    "# alive at once, constants left out. `both` stands for the two directions. Written by test_ledger --update.\n";

struct column {
    const char* name;
    int operation_counts::* count;
};
constexpr column columns[] = {
    {"load", &operation_counts::loads},    {"store", &operation_counts::stores},
    {"twid", &operation_counts::twiddles}, {"add", &operation_counts::adds},
    {"add_i", &operation_counts::turned},  {"mul", &operation_counts::scales},
    {"fma", &operation_counts::fused},     {"fma_i", &operation_counts::turned_fused},
    {"cmul", &operation_counts::products}, {"zip", &operation_counts::exchanges},
    {"pool", &operation_counts::pool},     {"alive", &operation_counts::peak},
};

const char* body_name(const body& b) {
    if (has_rows_twiddles(b)) return "multiplied";
    if (has(b, op::zip_lo)) return "transposed";
    return has(b, op::twiddle) ? "twiddled" : "plain";
}

std::string line_start(const std::string& family, const std::string& size, const std::string& direction,
                       const std::string& body_text) {
    std::ostringstream s;
    s << std::left << std::setw(20) << family << std::setw(5) << size << std::setw(5) << direction << std::setw(11)
      << body_text << std::right;
    return s.str();
}

std::string heading() {
    std::ostringstream s;
    s << line_start("# kernel", "size", "", "body");
    for (const column& c : columns) s << std::setw(6) << c.name;
    return s.str();
}

using lines = std::vector<std::string>;

// The lines of one kernel, without its direction.
lines kernel_lines(const form& f, int size, int sign, const char* direction) {
    lines result;
    for (const auto& b : different_bodies(f, size, sign)) {
        const operation_counts counts = count_operations(*b);
        std::ostringstream s;
        s << line_start(f.name, (size < 10 ? "n0" : "n") + std::to_string(size), direction, body_name(*b));
        for (const column& c : columns) s << std::setw(6) << counts.*c.count;
        // Bodies of the same counts need no second line.
        if (std::find(result.begin(), result.end(), s.str()) == result.end()) result.push_back(s.str());
    }
    return result;
}

lines ledger() {
    lines all;
    for (const form& f : forms()) {
        for (const int size : f.sizes) {
            if (f.sign != 0) {
                const lines one = kernel_lines(f, size, f.sign, f.sign < 0 ? "fwd" : "bwd");
                all.insert(all.end(), one.begin(), one.end());
                continue;
            }
            const bool same = kernel_lines(f, size, -1, "") == kernel_lines(f, size, 1, "");
            lines added = kernel_lines(f, size, -1, same ? "both" : "fwd");
            if (!same)
                for (const std::string& l : kernel_lines(f, size, 1, "bwd")) added.push_back(l);
            all.insert(all.end(), added.begin(), added.end());
        }
    }
    return all;
}

lines committed() {
    lines all;
    std::ifstream file(LEDGER_FILE);
    for (std::string l; std::getline(file, l);)
        if (!l.starts_with("#")) all.push_back(l);
    return all;
}

void update() {
    std::ofstream file(LEDGER_FILE);
    file << head << heading() << "\n";
    for (const std::string& l : ledger()) file << l << "\n";
}

}  // namespace

TEST(Ledger, IsThatOfTheGenerator) {
    const lines is = ledger(), was = committed();
    ASSERT_FALSE(was.empty()) << LEDGER_FILE;
    int different = 0;
    for (size_t i = 0; i < std::max(is.size(), was.size()) && different < 20; ++i) {
        const std::string a = i < is.size() ? is[i] : "nothing", b = i < was.size() ? was[i] : "nothing";
        if (a == b) continue;
        ++different;
        ADD_FAILURE() << "line " << i + 1 << " of the kernels\n  is  " << a << "\n  was " << b;
    }
}

int main(int argc, char** argv) {
    testing::InitGoogleTest(&argc, argv);
    if (argc > 1 && std::string(argv[1]) == "--update") return update(), 0;
    return RUN_ALL_TESTS();
}
