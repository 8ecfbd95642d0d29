// SPDX-License-Identifier: Apache-2.0
// The planner's policy for one complex transform, as a text that is reviewed like code: one line per problem, compared
// with plan_trees.txt. After an intended change copy the file that the failing test names over it.
#include "dft/schedule_tables.h"
#include "tests/dft/problems.h"
#include "tests/support/plan_tree.h"

#include <fstream>
#include <set>

namespace {

std::string line_of(const complex_problem& p) {
    fft_plan record = record_of(p);
    float arrays[2];
    record.in = arrays;
    record.out = p.in_place ? arrays : arrays + 1;
    const planned plan(record);
    std::string text = std::to_string(p.n);
    if (p.is != 1 || p.os != 1) text += " strides " + std::to_string(p.is) + " " + std::to_string(p.os);
    if (p.in_place) text += " in place";
    return text + ": " + (plan ? plan_tree(plan.get()) : "no plan");
}

std::vector<std::string> all_lines() {
    std::set<int64_t> lengths;
    for (int64_t n = 1; n <= 4096; ++n) lengths.insert(n);
    for (const schedule_row& row : schedule_table_main) lengths.insert(row.size);
    for (int64_t n = 8192; n <= 1 << 20; n *= 2) lengths.insert(n);
    for (int64_t n : {10007, 3 * 32768}) lengths.insert(n);
    std::vector<std::string> lines;
    for (int64_t n : lengths) lines.push_back(line_of({n}));
    for (int64_t n = 2; n <= 128; ++n) lines.push_back(line_of({n, -1, 3, 1}));
    for (int64_t n : {1000, 1009, 10007, 1 << 16}) lines.push_back(line_of({n, -1, 1, 2}));
    for (int64_t n = 1; n <= 1 << 20; n *= 2) lines.push_back(line_of({n, -1, 1, 1, true}));
    return lines;
}

std::vector<std::string> lines_in(const std::string& path) {
    std::ifstream file(path);
    std::vector<std::string> lines;
    for (std::string line; std::getline(file, line);)
        if (!line.starts_with('#')) lines.push_back(line);
    return lines;
}

}  // namespace

TEST(PlanTrees, AreThoseOfTheFile) {
    const std::vector<std::string> expected = lines_in(PLAN_TREES_FILE), actual = all_lines();
    if (expected == actual) return;
    std::ofstream file(PLAN_TREES_ACTUAL);
    file << "# problem: row execute_name [radices] (subplans), by rules\n";
    for (const std::string& line : actual) file << line << "\n";
    ADD_FAILURE() << "trees differ from " << PLAN_TREES_FILE << "; the new ones are in " << PLAN_TREES_ACTUAL;
    int shown = 0;
    for (size_t i = 0; i < actual.size() && shown < 10; ++i)
        if (i >= expected.size() || expected[i] != actual[i]) {
            ++shown;
            EXPECT_EQ(actual[i], i < expected.size() ? expected[i] : "");
        }
}
