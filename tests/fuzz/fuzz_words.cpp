// SPDX-License-Identifier: Apache-2.0
// Any text as a problem or a call in words: it gives a plan, a reason why there is none, or an exception that names the
// word; and what a problem prints as its name is read as the same problem.
#include "problems/call_words.h"
#include "problems/explained_plan.h"
#include "problems/plan_tree.h"
#include "problems/problem.h"
#include "tests/fuzz/fail.h"

#include <stdexcept>

namespace {

constexpr double affordable_points = 4096;

void read_problem(const std::string& text) {
    const problems::problem p = problems::parse_problem(text);
    if (problems::parse_problem(p.text).text != p.text) fail("'" + p.text + "' has another name when it is read again");
    if (p.measured || p.points() > affordable_points || p.threads > 4) return;
    const explained_plan explained = explain(text);
    if (!explained.plan && explained.reason.empty()) fail(text + ": neither a plan nor a reason");
    if (explained.plan && plan_tree_text(*explained.plan).empty()) fail(text + ": an empty tree");
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* bytes, size_t size) {
    const std::string text(reinterpret_cast<const char*>(bytes), size);
    try {
        if (call_words::are_in(text))
            static_cast<void>(call_words(text).reason());
        else
            read_problem(text);
    } catch (const std::invalid_argument& error) {
        if (std::string(error.what()).empty()) fail(text + ": refused without a word");
    }
    return 0;
}
