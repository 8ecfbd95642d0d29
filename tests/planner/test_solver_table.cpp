// SPDX-License-Identifier: Apache-2.0
// The table of solvers and the sources it points to: its rows are read here as its readers see them, as text.
#include "planner/solver_table.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <regex>
#include <set>
#include <string>
#include <string_view>
#include <vector>

namespace {

const std::filesystem::path sources = SOURCE_FOLDER;
const std::string last_resort = "solve_problem_compact_input";  // it stands behind the whole table

// The groups of the expression in each line that it matches whole.
std::vector<std::smatch> matching_lines(const std::vector<std::string>& lines, const char* expression) {
    std::vector<std::smatch> found;
    const std::regex whole(expression);
    std::smatch groups;
    for (const std::string& line : lines)
        if (std::regex_match(line, groups, whole)) found.push_back(groups);
    return found;
}

std::vector<std::string> lines_with(const std::filesystem::path& path, std::string_view word) {
    std::ifstream file(path);
    std::vector<std::string> lines;
    for (std::string line; std::getline(file, line);)
        if (line.find(word) != line.npos) lines.push_back(line);
    return lines;
}

// The solvers that a file defines or declares at the beginning of a line.
std::vector<std::string> solvers_of(const std::filesystem::path& path) {
    const std::vector<std::string> lines = lines_with(path, "int solve_");
    std::vector<std::string> names;
    for (const std::smatch& m : matching_lines(lines, R"(int (solve_(problem_\w+|\w+_problem))\(fft_plan\*.*)"))
        names.push_back(m[1]);
    return names;
}

struct written_row {
    int number;
    std::string solver, file;
};

std::vector<written_row> written_rows() {
    const std::vector<std::string> lines = lines_with(sources / "planner/solver_table.cpp", "*/ SOLVER(");
    std::vector<written_row> rows;
    for (const std::smatch& m : matching_lines(lines, R"re( +/\* +(\d+) \*/ SOLVER\((\w+), +"([\w/.]+)"\),)re"))
        rows.push_back({std::stoi(m[1]), m[2], m[3]});
    return rows;
}

}  // namespace

TEST(SolverTable, NumbersItsRowsAndNamesEachSolverOnce) {
    const std::vector<written_row> rows = written_rows();
    ASSERT_EQ(rows.size(), size_t{solver_count});
    std::set<solve_function> solvers;
    for (int row = 0; row < solver_count; ++row) {
        EXPECT_EQ(rows[row].number, row) << rows[row].solver;
        EXPECT_EQ(solver_table[row].name, rows[row].solver) << "row " << row;
        EXPECT_TRUE(solvers.insert(solver_table[row].solve).second) << rows[row].solver << " stands twice";
    }
}

TEST(SolverTable, TellsTheFileThatDefinesEachSolver) {
    for (const written_row& row : written_rows()) {
        EXPECT_TRUE(std::filesystem::exists(sources / row.file)) << row.file << " of " << row.solver;
        const std::vector<std::string> defined = solvers_of(sources / row.file);
        EXPECT_EQ(std::count(defined.begin(), defined.end(), row.solver), 1) << row.solver << " in " << row.file;
    }
}

// The declarations are a second, independent statement of the order, which is the planner's policy.
TEST(SolverTable, StandsInTheOrderOfTheDeclarations) {
    std::vector<std::string> rows;
    for (const written_row& row : written_rows()) rows.push_back(row.solver);
    rows.push_back(last_resort);
    EXPECT_EQ(solvers_of(sources / "planner/solvers.h"), rows);
}

TEST(SolverTable, HoldsEverySolverButTheLastResort) {
    std::set<std::string> expected = {last_resort}, found;
    for (const written_row& row : written_rows()) expected.insert(row.solver);
    for (const char* folder : {"batch", "dft", "real"})
        for (const auto& entry : std::filesystem::directory_iterator(sources / folder))
            if (entry.path().extension() == ".cpp")
                for (const std::string& name : solvers_of(entry)) found.insert(name);
    EXPECT_EQ(found, expected);
}
