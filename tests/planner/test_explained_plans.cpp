// SPDX-License-Identifier: Apache-2.0
// qfftf-plan beside the planning calls: the same plan for the same problem, and for a refusal a reason that is true.
#include "interface/plan_call.h"
#include "problems/call_words.h"
#include "problems/explained_plan.h"
#include "problems/plan_tree.h"
#include "problems/stand_in_arrays.h"
#include "tests/planner/hostile_calls.h"
#include "tests/planner/reason_claims.h"
#include "tools/plan_usage.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <climits>
#include <random>
#include <regex>
#include <set>
#include <stdexcept>

// The address sanitizer ends a program that asks for more memory than there is, unless it is told that null is right.
extern "C" const char* __asan_default_options();
const char* __asan_default_options() { return "allocator_may_return_null=1"; }

namespace {

std::vector<std::string> quoted_texts(const std::string& text) {
    std::vector<std::string> found;
    const std::regex quotation("'([^']+)'");
    for (std::sregex_iterator it(text.begin(), text.end(), quotation), end; it != end; ++it) found.push_back((*it)[1]);
    return found;
}

using form = enum hostile_call::form;

// ---- a drawn call in words, and its numbers by name ----

std::string joined(const int* list, int count) {
    std::string text;
    for (int k = 0; k < count; ++k) text += (k ? "," : "") + std::to_string(list[k]);
    return text;
}

std::string triples(const fft_iodim64* list, int count) {
    std::string text;
    for (int k = 0; k < count; ++k)
        text += (k ? "," : "") + std::to_string(list[k].n) + ":" + std::to_string(list[k].is) + ":" +
                std::to_string(list[k].os);
    return text;
}

std::string kind_words(const hostile_call& c) {
    std::string text;
    for (int k = 0; k < c.rank; ++k) text += (k ? "," : "") + std::to_string(c.kinds[k]);
    return text;
}

std::string words_of(const hostile_call& c, bool in_place) {
    static constexpr const char* kinds[] = {"c2c", "c2r", "r2c", "r2r"};
    std::string text = (c.form == form::many ? "many " : "guru ") + std::string(kinds[c.kind]);
    const auto add = [&](const char* key, const std::string& value) { text += std::string(" ") + key + "=" + value; };
    if (c.form == form::many) {
        if (!c.no_n) add("n", joined(c.n, c.rank));
        if (!c.no_n && !c.no_inembed) add("inembed", joined(c.inembed, c.rank));
        if (!c.no_n && !c.no_onembed) add("onembed", joined(c.onembed, c.rank));
        add("howmany", std::to_string(c.howmany));
        add("istride", std::to_string(c.istride));
        add("ostride", std::to_string(c.ostride));
        add("idist", std::to_string(c.idist));
        add("odist", std::to_string(c.odist));
    } else {
        if (c.rank > 0) add("dims", triples(c.dims, c.rank));
        if (c.howmany_rank > 0) add("batch", triples(c.batch, c.howmany_rank));
        if (c.split) text += " split";
        if (c.wide) text += " wide";
    }
    if (c.kind == kind_r2r && !c.no_kinds && c.rank > 0) add("kinds", kind_words(c));
    if (c.kind == kind_c2c && !c.split) add("sign", std::to_string(c.sign));
    return text + (in_place ? " inplace" : "");
}

void add_triples(call_numbers& numbers, const std::string& name, const fft_iodim64* list, int count) {
    for (int k = 0; k < count; ++k) {
        const std::string item = name + "[" + std::to_string(k) + "].";
        numbers[item + "n"] = list[k].n;
        numbers[item + "is"] = list[k].is;
        numbers[item + "os"] = list[k].os;
    }
}

call_numbers numbers_of(const hostile_call& c) {
    call_numbers numbers = {
        {"rank", c.rank},   {"howmany", c.howmany}, {"istride", c.istride}, {"ostride", c.ostride},
        {"idist", c.idist}, {"odist", c.odist},     {"sign", c.sign},       {"howmany_rank", c.howmany_rank}};
    uint32_t points = 1;
    for (int k = 0; k < c.rank; ++k) {
        const std::string item = "[" + std::to_string(k) + "]";
        numbers["n" + item] = c.form == form::guru ? c.dims[k].n : c.n[k];
        numbers["inembed" + item] = c.inembed[k];
        numbers["onembed" + item] = c.onembed[k];
        numbers["kinds" + item] = c.kinds[k];
        points *= static_cast<uint32_t>(c.n[k]);
    }
    numbers["points"] = points;
    if (c.form == form::guru) {
        add_triples(numbers, "dims", c.dims, c.rank);
        add_triples(numbers, "howmany_dims", c.batch, c.howmany_rank);
    }
    return numbers;
}

// ---- drawing ----

// A call that words can tell: ranks are lengths of lists, and the 32-bit calls have 32-bit numbers.
bool can_be_told(hostile_call& c) {
    if (c.form != form::many && c.form != form::guru) return false;
    c.flags = 0;
    c.split &= c.form == form::guru;
    if (c.rank < 0 || c.rank > 4 || c.howmany_rank < 0 || c.howmany_rank > 4) return false;
    if (c.form == form::many && c.rank == 0) return false;
    if (c.form == form::many ? c.no_n : c.no_dims) c.rank = 0;
    if (c.rank == 0) c.no_dims = c.no_kinds = true;
    if (c.no_batch) c.howmany_rank = 0;
    if (c.wide || c.form == form::many) return true;
    for (auto* list : {c.dims, c.batch})
        for (int k = 0; k < 4; ++k)
            for (int64_t number : {list[k].n, list[k].is, list[k].os})
                if (number < INT_MIN || number > INT_MAX) return false;
    return true;
}

// Sizes that are quickly planned, or a layout that is refused before anything is planned.
bool is_cheap(const std::string& words) {
    fft_plan* record = call_words(words).record();
    bool cheap = true;
    for (int k = 0; record && k < record->rank; ++k) cheap &= record->dims[k].n <= 20'000;
    cheap |= record && !layout_is_addressable(*record);
    fft_plan_free(record);
    return cheap;
}

struct drawn {
    hostile_call call;
    bool in_place;
    std::string words;
};

drawn draw(hostile_source& source, uint32_t number) {
    for (;;) {
        drawn d = {source.draw(), number % 3 == 0, ""};
        if (!can_be_told(d.call)) continue;
        d.words = words_of(d.call, d.in_place);
        if (is_cheap(d.words)) return d;
    }
}

hostile_arrays arrays_of(const drawn& d) {
    const bool re_im = d.call.form == form::guru && d.call.split && d.call.kind == kind_c2c;
    return {stand_in_array(stand_in::in), stand_in_array(stand_in::in_imag),
            stand_in_array(d.in_place ? stand_in::in : stand_in::out),
            stand_in_array(d.in_place && re_im ? stand_in::in_imag : stand_in::out_imag)};
}

std::string line_of(const fft_plan* plan) {
    return plan ? problem_text(*plan) + ": " + plan_tree_line(*plan) : "refused";
}

void expect_same_plan(const std::string& words, qsl_fftf_plan by_call, const explained_plan& by_words) {
    EXPECT_EQ(line_of(by_call), line_of(by_words.plan.get())) << words << "\n" << by_words.reason;
    EXPECT_EQ(by_words.reason.empty(), by_words.plan != nullptr) << words;
    qsl_fftf_destroy_plan(by_call);
}

std::string without_numbers(const std::string& reason) {
    return std::regex_replace(reason, std::regex("-?[0-9]+"), "#");
}

// A reason that is true: a null list, an extent above 2^48, or claims that the numbers of the call bear out.
void expect_true_reason(const drawn& d, const std::string& reason) {
    const hostile_call& c = d.call;
    if (reason == "n is null") {
        EXPECT_TRUE(c.no_n) << d.words;
    } else if (reason == "dims is null") {
        EXPECT_TRUE(c.no_dims) << d.words;
    } else if (reason == "kinds is null") {
        EXPECT_TRUE(c.no_kinds) << d.words;
    } else if (reason.find("(2^48)") != reason.npos) {
        const call_words call(d.words);
        std::unique_ptr<fft_plan, void (*)(fft_plan*)> record(call.record(), fft_plan_free);
        EXPECT_FALSE(layout_is_addressable(*record)) << d.words;
    } else if (reason.starts_with("in place, no solver")) {
        EXPECT_TRUE(d.in_place) << d.words;
        qsl_fftf_plan apart = d.call.plan(arrays_of({d.call, false, d.words}));
        EXPECT_TRUE(apart) << d.words;
        qsl_fftf_destroy_plan(apart);
    } else
        EXPECT_EQ(false_claim(reason, numbers_of(c)), "") << d.words << "\n" << reason;
}

// ---- problems of the problem language, with the layout that it tells ----

struct drawn_problem {
    std::string words;
    hostile_call call;
    bool in_place;
    int threads;
};

// Sizes of one side in memory, slowest first.
std::vector<int> rows(const hostile_call& c, bool complex_half, bool padded) {
    std::vector<int> n(c.n, c.n + c.rank);
    if (complex_half) n.back() = n.back() / 2 + 1;
    if (padded) n.back() = 2 * (n.back() / 2 + 1);
    return n;
}

drawn_problem draw_problem(std::mt19937& random) {
    const auto below = [&](uint32_t bound) { return static_cast<int>(random() % bound); };
    static constexpr int sizes[] = {1, 2, 3, 4, 5, 7, 8, 9, 12, 16, 17, 24, 31, 41, 64, 100, 101, 127};
    static constexpr const char* kinds[] = {"c2c", "c2r", "r2c"};
    static constexpr const char* names[] = {"r2hc",    "hc2r",    "dht",     "redft00", "redft01", "redft10",
                                            "redft11", "rodft00", "rodft01", "rodft10", "rodft11"};
    drawn_problem p = {};
    hostile_call& c = p.call;
    c.form = form::many;
    c.no_inembed = c.no_onembed = true;
    c.kind = random() % 4;
    c.rank = 1 + below(3);
    for (int k = 0; k < c.rank; ++k) {
        c.n[k] = sizes[random() % std::size(sizes)];
        c.kinds[k] = random() % 11;
        if (c.kind == kind_r2r) p.words += (k ? "/" : "") + std::string(names[c.kinds[k]]);
    }
    if (c.kind != kind_r2r) p.words = kinds[c.kind];
    for (int k = 0; k < c.rank; ++k) p.words += (k ? "x" : " ") + std::to_string(c.n[k]);
    const auto add = [&](const char* word, int value) { p.words += std::string(" ") + word + std::to_string(value); };
    const auto chosen = [&](uint32_t one_in) { return random() % one_in == 0; };

    const bool half = c.kind == kind_r2c || c.kind == kind_c2r;
    p.in_place = chosen(3);
    if (p.in_place) p.words += " inplace";
    c.howmany = chosen(2) ? 1 : 1 + below(9);
    if (c.howmany != 1) add("batch=", c.howmany);
    const bool interleaved = chosen(4) && !(half && p.in_place);
    if (interleaved) p.words += " interleaved";
    c.istride = c.ostride = interleaved ? c.howmany : 1;
    if (chosen(4)) add("istride=", c.istride = 1 + below(4));
    if (chosen(4)) add("ostride=", c.ostride = 1 + below(4));
    const auto distance = [&](const std::vector<int>& row, int stride) {
        int whole = interleaved ? 1 : stride;
        for (int n : row) whole *= interleaved ? 1 : n;
        return whole;
    };
    c.idist = distance(rows(c, c.kind == kind_c2r, c.kind == kind_r2c && p.in_place), c.istride);
    c.odist = distance(rows(c, c.kind == kind_r2c, c.kind == kind_c2r && p.in_place), c.ostride);
    if (chosen(5)) add("idist=", c.idist = 1 + below(200));
    if (chosen(5)) add("odist=", c.odist = 1 + below(200));
    c.sign = -1;
    if (c.kind == kind_c2c && chosen(2)) {
        p.words += " backward";
        c.sign = 1;
    }
    p.threads = chosen(5) ? 2 + below(4) : 1;
    if (p.threads > 1) add("threads=", p.threads);
    return p;
}

}  // namespace

TEST(ExplainedPlans, ExistForEveryProblemOfTheUsageText) {
    const std::vector<std::string> problems = quoted_texts(plan_usage);
    EXPECT_GE(problems.size(), 12u);
    for (const std::string& words : problems) {
        const explained_plan p = explain(words);
        EXPECT_TRUE(p.plan) << words << "\n" << p.reason;
    }
}

TEST(ExplainedPlans, TheLegendShowsATree) {
    const explained_plan p = explain("c2c 1024");
    ASSERT_TRUE(p.plan);
    const std::string tree = plan_tree_text(*p.plan), solver = tree.substr(tree.find('\n') + 5);
    EXPECT_NE(std::string(plan_legend).find("        " + solver), std::string::npos) << solver;
}

TEST(ExplainedPlans, AgreeWithTheInterfaceForRandomCalls) {
    qsl_fftf_plan_with_nthreads(1);
    std::set<std::string> reasons;
    int planned = 0;
    hostile_source source(5);
    for (uint32_t i = 0; i < 2000; ++i) {
        const drawn d = draw(source, i);
        const explained_plan by_words = explain(d.words);
        expect_same_plan(d.words, d.call.plan(arrays_of(d)), by_words);
        planned += by_words.plan != nullptr;
        if (by_words.plan) continue;
        expect_true_reason(d, by_words.reason);
        reasons.insert(without_numbers(by_words.reason));
    }
    EXPECT_GE(planned, 300);
    EXPECT_LE(planned, 1500);
    EXPECT_GE(reasons.size(), 25u);
    if (getenv("SHOW_REASONS"))
        for (const auto& reason : reasons) puts(reason.c_str());
}

TEST(ExplainedPlans, AgreeWithTheInterfaceForRandomProblems) {
    std::mt19937 random(7);
    std::set<std::string> reasons;
    int planned = 0;
    for (int i = 0; i < 2000; ++i) {
        const drawn_problem p = draw_problem(random);
        const drawn d = {p.call, p.in_place, p.words};
        qsl_fftf_plan_with_nthreads(p.threads);
        qsl_fftf_plan by_call = p.call.plan(arrays_of(d));
        qsl_fftf_plan_with_nthreads(1);
        const explained_plan by_words = explain(p.words);
        expect_same_plan(p.words, by_call, by_words);
        planned += by_words.plan != nullptr;
        if (by_words.plan) continue;
        expect_true_reason(d, by_words.reason);
        reasons.insert(without_numbers(by_words.reason));
    }
    EXPECT_GE(planned, 1500);
    EXPECT_GE(reasons.size(), 3u);
    qsl_fftf_plan_with_nthreads(1);
}

TEST(ExplainedPlans, CallsAfterAProblemWithThreadsHaveOne) {
    EXPECT_GT(explain("c2c 64 batch=1000 threads=4").plan->subplan_count, 1);
    const explained_plan p = explain("many c2c n=64 howmany=1000 idist=64 odist=64");
    EXPECT_EQ(p.plan->nthreads, 1);
}

TEST(ExplainedPlans, SplitBackwardExchangesTheParts) {
    const explained_plan forth = explain("guru c2c dims=16:1:1 split sign=-1"),
                         back = explain("guru c2c dims=16:1:1 split sign=1");
    ASSERT_TRUE(forth.plan && back.plan);
    EXPECT_EQ(forth.plan->sign, -1);
    EXPECT_EQ(back.plan->sign, -1);
    EXPECT_EQ(forth.plan->in, back.plan->in_imag);
    EXPECT_EQ(forth.plan->in_imag, back.plan->in);
    EXPECT_EQ(forth.plan->out, back.plan->out_imag);
    EXPECT_EQ(forth.plan->out_imag, back.plan->out);
}

TEST(ExplainedPlans, WhatNoCallCanBeToldIsNamed) {
    const struct {
        const char *words, *text;
    } mistakes[] = {{"many r2r n=4,5,6 kinds=5", "kinds has 1 entries for 3 sizes"},
                    {"many r2r kinds=5", "kinds has 1 entries for 0 sizes"},
                    {"many c2c inembed=4 n=4,5", "inembed has 1 entries for 2 sizes"},
                    {"guru r2r dims=4:1:1,4:4:4 kinds=1,2,3", "kinds has 3 entries for 2 sizes"},
                    {"guru c2c dims=8589934600:1:1", "'8589934600' doesn't fit into the 32 bits of the call"},
                    {"guru c2c dims=8:1:1 batch=2:1:-8589934600", "'-8589934600' doesn't fit into the 32 bits"},
                    {"many c2c n=8589934600", "'8589934600' doesn't fit into 32 bits"},
                    {"guru r2r dims=8:1:1 kinds=2 split", "no split call of real-to-real"},
                    {"guru c2c dims=8:1:1 split sign=7", "the split call has no sign"},
                    {"many r2c n=8 sign=1", "'sign' is for c2c alone"},
                    {"many c2c n=8 kinds=1", "'kinds' is for r2r alone"},
                    {"guru c2c n=8", "'n=8' is no word of this call"},
                    {"many c2c n=4,,5", "'' is no number"},
                    {"C2C 8", "did you mean c2c?"},
                    {"redtf10 8", "did you mean redft10?"},
                    {"c2c 8 inplcae", "did you mean inplace?"},
                    {"many c2c n=8 hwmany=2", "did you mean howmany=?"},
                    {"many C2R n=8", "did you mean c2r?"},
                    {"c2c 65536x65537 batch=2", "a transform has 4295032832 elements"},
                    {"c2c 99999999999", "go up to 2147483647"}};
    for (const auto& mistake : mistakes) try {
            explain(mistake.words);
            ADD_FAILURE() << mistake.words << " is taken";
        } catch (const std::invalid_argument& error) {
            EXPECT_NE(std::string(error.what()).find(mistake.text), std::string::npos) << mistake.words << "\n"
                                                                                       << error.what();
        }
}

TEST(ExplainedPlans, RefuseMeasuredProblemsWithoutMemoryOrALayout) {
    EXPECT_NE(explain("c2c 2147483647x2147483647x2147483647 measured").reason.find("(2^48)"), std::string::npos);
    EXPECT_TRUE(explain("c2c 60 measured inplace").plan);
}
