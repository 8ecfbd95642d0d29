// SPDX-License-Identifier: Apache-2.0
// qfftf-plan: how the library solves a problem, or why it refuses it.
#include "interface/level.h"
#include "problems/explained_plan.h"
#include "problems/plan_tree.h"
#include "tools/plan_json.h"
#include "tools/plan_size.h"
#include "tools/plan_usage.h"

#include <charconv>
#include <cstdio>
#include <cstring>
#include <stdexcept>
#include <string>
#include <vector>

namespace {

enum class form { tree, line, json };

void print_tree(const fft_plan& plan) {
    fputs(plan_tree_text(plan).c_str(), stdout);
    printf("owned %llu bytes, per execution %llu bytes, operations %.0f\n",
           static_cast<unsigned long long>(plan_bytes(plan)), static_cast<unsigned long long>(execution_bytes(plan)),
           plan_operations(plan));
}

// Prints the plan, or why there is none. False in the second case.
bool show(const std::string& words, form how) {
    const explained_plan p = explain(words);
    if (how == form::json)
        printf("%s\n", plan_json(words, p).c_str());
    else if (!p.plan)
        printf("%s : refused: %s\n", words.c_str(), p.reason.c_str());
    else if (how == form::line)
        printf("%s : %s\n", words.c_str(), plan_tree_line(*p.plan).c_str());
    else
        print_tree(*p.plan);
    return p.plan != nullptr;
}

void show_good_length(const char* text) {
    int n = 0;
    const char* end = text + strlen(text);
    const auto [stop, error] = std::from_chars(text, end, n);
    if (error != std::errc() || stop != end || n < 1) throw std::invalid_argument("a length from 1 up is wanted");
    const int good = qfftf_good_length(n);
    if (good == 0) throw std::invalid_argument("no such length fits the calls' numbers");
    printf("%d\n", good);
}

[[noreturn]] void show_and_exit(const char* text) {
    fputs(text, stdout);
    exit(0);
}

}  // namespace

int main(int argc, char** argv) {
    form how = form::tree;
    bool all_planned = true, lengths = false;
    std::vector<const char*> words;
    for (int i = 1; i < argc; ++i) {
        const std::string word = argv[i];
        if (word == "--help" || word == "-h") show_and_exit(plan_usage);
        if (word == "--version") show_and_exit("qfftf-plan " QFFTF_VERSION "\n");
        if (word == "--line")
            how = form::line;
        else if (word == "--json")
            how = form::json;
        else if (word == "--legend")
            fputs(plan_legend, stdout);
        else if (word == "--good")
            lengths = true;
        else if (word.starts_with("--")) {
            fprintf(stderr, "qfftf-plan: %s is no option; qfftf-plan --help shows them\n", argv[i]);
            return 2;
        } else
            words.push_back(argv[i]);
    }
    if (how == form::tree && !lengths && !words.empty())
        printf("level %s: %s\n", level_at_work().name, level_at_work().description);
    for (const char* word : words) {
        try {
            if (lengths)
                show_good_length(word);
            else
                all_planned &= show(word, how);
        } catch (const std::exception& e) {
            fprintf(stderr, "qfftf-plan: %s: %s\n", word, e.what());
            return 2;
        }
    }
    if (words.empty() && argc == 1) fputs(plan_usage, stderr);
    return argc == 1 ? 2 : all_planned ? 0 : 1;
}
