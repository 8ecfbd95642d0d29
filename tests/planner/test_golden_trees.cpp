// SPDX-License-Identifier: Apache-2.0
// The planner's policy as text: each line of the files in plan_trees/ is a problem and the tree of solvers that takes
// it, each with the bytes of buffer and aux that it keeps. To make them anew after a change of policy, or after adding
// a line that holds a problem only:
//     build/PRESET/tests/planner/test_golden_trees --update
// and read the difference as you would read code.
#include "problems/plan_tree.h"
#include "problems/planned_problem.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <vector>

namespace {

const std::filesystem::path folder = PLAN_TREES_FOLDER;

struct line {
    std::string problem;  // empty for a comment
    std::string rest;     // the tree, or the comment
};

std::vector<line> read_lines(const std::filesystem::path& path) {
    std::ifstream file(path);
    std::vector<line> lines;
    for (std::string text; std::getline(file, text);) {
        const size_t colon = text.find(" : ");
        const bool comment = text.empty() || text[0] == '#';
        if (comment)
            lines.push_back({"", text});
        else
            lines.push_back({text.substr(0, colon), colon == text.npos ? "" : text.substr(colon + 3)});
    }
    return lines;
}

std::string tree_of(const std::string& problem) {
    static float arrays[2][4];  // planning by rules looks at the addresses alone
    const problems::problem p = problems::parse_problem(problem);
    qsl_fftf_plan plan = plan_problem_text(p, arrays[0], arrays[p.in_place ? 0 : 1]);
    const std::string text = plan ? plan_tree_line(*plan, tree_sizes::shown) : "refused";
    qsl_fftf_destroy_plan(plan);
    return text;
}

std::vector<std::filesystem::path> golden_files() {
    std::vector<std::filesystem::path> files;
    for (const auto& entry : std::filesystem::directory_iterator(folder))
        if (entry.path().extension() == ".txt") files.push_back(entry.path());
    return files;
}

void update(const std::filesystem::path& path) {
    const std::vector<line> lines = read_lines(path);
    std::ofstream file(path);
    for (const line& l : lines) {
        if (!l.problem.empty())
            file << l.problem << " : " << tree_of(l.problem);
        else
            file << l.rest;
        file << "\n";
    }
}

}  // namespace

TEST(PlanTrees, AreThoseOfTheFiles) {
    int problems = 0, different = 0;
    for (const auto& path : golden_files())
        for (const line& l : read_lines(path)) {
            if (l.problem.empty()) continue;
            ++problems;
            const std::string tree = tree_of(l.problem);
            if (tree == l.rest) continue;
            if (++different <= 20)
                ADD_FAILURE() << path.filename() << ": " << l.problem << "\n  is " << tree << "\n  was " << l.rest;
        }
    EXPECT_GE(problems, 1000);
    EXPECT_EQ(different, 0);
}

int main(int argc, char** argv) {
    testing::InitGoogleTest(&argc, argv);
    if (argc == 2 && std::string(argv[1]) == "--update") {
        for (const auto& path : golden_files()) update(path);
        return 0;
    }
    return RUN_ALL_TESTS();
}
