// SPDX-License-Identifier: Apache-2.0
// The planner's policy for one complex transform, as a text that is reviewed like code: one line per problem, compared
// with plan_trees.txt. After an intended change copy the file that the failing test names over it.
#include "dft/schedule_tables.h"
#include "tests/dft/problems.h"
#include "tests/support/plan_tree.h"

#include <fstream>
#include <map>
#include <set>

namespace {

std::string text_of(const complex_problem& p) {
    std::string text = std::to_string(p.n);
    if (p.is != 1 || p.os != 1) text += " strides " + std::to_string(p.is) + " " + std::to_string(p.os);
    return p.in_place ? text + " in place" : text;
}

std::string tree_of(const complex_problem& p) {
    fft_plan record = record_of(p);
    float arrays[2];
    record.in = arrays;
    record.out = p.in_place ? arrays : arrays + 1;
    const planned plan(record);
    return plan ? plan_tree(plan.get()) : "no plan";
}

std::vector<complex_problem> all_problems() {
    std::set<int64_t> lengths;
    for (int64_t n = 1; n <= 4096; ++n) lengths.insert(n);
    for (const schedule_row& row : schedule_table_main) lengths.insert(row.size);
    for (int64_t n = 8192; n <= 1 << 20; n *= 2) lengths.insert(n);
    for (int64_t n : {10007, 3 * 32768}) lengths.insert(n);
    std::vector<complex_problem> problems;
    for (int64_t n : lengths) problems.push_back({n});
    for (int64_t n = 2; n <= 128; ++n) problems.push_back({n, -1, 3, 1});
    for (int64_t n : {1000, 1009, 10007, 1 << 16}) problems.push_back({n, -1, 1, 2});
    for (int64_t n = 1; n <= 1 << 20; n *= 2) problems.push_back({n, -1, 1, 1, true});
    return problems;
}

// The trees of the file by problem.
std::map<std::string, std::string> expected_trees() {
    std::map<std::string, std::string> trees;
    std::ifstream file(PLAN_TREES_FILE);
    for (std::string line; std::getline(file, line);)
        if (const size_t colon = line.find(": "); colon != line.npos && !line.starts_with('#'))
            trees[line.substr(0, colon)] = line.substr(colon + 2);
    return trees;
}

bool is_left_out(const complex_problem& p, size_t i) { return is_emulated && (p.n > 65536 || (p.n > 256 && i % 16)); }

}  // namespace

TEST(PlanTrees, AreThoseOfTheFile) {
    const std::vector<complex_problem> problems = all_problems();
    std::map<std::string, std::string> expected = expected_trees();
    EXPECT_EQ(expected.size(), problems.size());
    std::ofstream actual(PLAN_TREES_ACTUAL);
    actual << "# problem: row execute_name [radices] buffer+aux (subplans), by rules; bytes\n";
    int differences = 0;
    for (size_t i = 0; i < problems.size(); ++i) {
        if (is_left_out(problems[i], i)) continue;
        const std::string problem = text_of(problems[i]), tree = tree_of(problems[i]);
        actual << problem << ": " << tree << "\n";
        if (tree == expected[problem]) continue;
        if (++differences <= 10) ADD_FAILURE() << problem << ": " << tree << ", in the file " << expected[problem];
    }
    EXPECT_EQ(differences, 0) << "trees differ from " << PLAN_TREES_FILE << "; the new ones are in "
                              << PLAN_TREES_ACTUAL;
}
