// SPDX-License-Identifier: Apache-2.0
#include "problems/problem.h"

#include "problems/near_word.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <fstream>
#include <stdexcept>

namespace problems {
namespace {

constexpr std::array<std::string_view, 11> r2r_names = {
    "r2hc", "hc2r", "dht", "redft00", "redft01", "redft10", "redft11", "rodft00", "rodft01", "rodft10", "rodft11"};

constexpr std::string_view kind_names[] = {"c2c",     "r2c",     "c2r",     "transpose", "copy",    "many",
                                           "guru",    "r2hc",    "hc2r",    "dht",       "redft00", "redft01",
                                           "redft10", "redft11", "rodft00", "rodft01",   "rodft10", "rodft11"};
constexpr std::string_view further_words[] = {"forward",  "backward", "inplace", "batch=",   "interleaved", "istride=",
                                              "ostride=", "idist=",   "odist=",  "measured", "threads="};

[[noreturn]] void reject(std::string_view word, const std::string& why) {
    throw std::invalid_argument("'" + std::string(word) + "': " + why);
}

// Products of positive numbers that are more than there is stay more than there is.
int64_t product(int64_t a, int64_t b) {
    int64_t result;
    return __builtin_mul_overflow(a, b, &result) ? INT64_MAX : result;
}

int number(std::string_view digits, std::string_view word) {
    int value = 0;
    const auto [end, error] = std::from_chars(digits.data(), digits.data() + digits.size(), value);
    if (error == std::errc::result_out_of_range) reject(word, "the calls' numbers go up to 2147483647");
    if (error != std::errc{} || end != digits.data() + digits.size() || value < 1)
        reject(word, "a number from 1 up is wanted here");
    return value;
}

// The pieces between separators, empty ones included.
std::vector<std::string_view> split(std::string_view text, std::string_view separators) {
    std::vector<std::string_view> result;
    for (size_t at = 0; at <= text.size();) {
        const size_t end = std::min(text.find_first_of(separators, at), text.size());
        result.push_back(text.substr(at, end - at));
        at = end + 1;
    }
    return result;
}

void parse_kind(problem& p, std::string_view word) {
    constexpr std::array<std::string_view, 6> families = {"c2c", "r2c", "c2r", "", "transpose", "copy"};
    for (size_t i = 0; i < families.size(); ++i)
        if (word == families[i]) {
            p.kind = static_cast<family>(i);
            return;
        }
    p.kind = family::r2r;
    for (std::string_view name : split(word, "/")) {
        size_t k = 0;
        while (k < r2r_names.size() && name != r2r_names[k]) ++k;
        if (k == r2r_names.size()) reject(name, "not a kind of transform" + did_you_mean(name, kind_names));
        p.r2r_kinds.push_back(static_cast<int>(k));
    }
}

void parse_sizes(problem& p, std::string_view word) {
    for (std::string_view size : split(word, "x")) p.n.push_back(number(size, word));
    if (p.n.size() > 4) reject(word, "one to four sizes are wanted");
    if (p.kind >= family::transpose && p.n.size() != 2) reject(word, "rows and columns are wanted");
    if (p.kind != family::r2r) return;
    if (p.r2r_kinds.size() == 1) p.r2r_kinds.resize(p.n.size(), p.r2r_kinds[0]);
    if (p.r2r_kinds.size() != p.n.size()) reject(word, "as many sizes as kinds are wanted");
}

void parse_word(problem& p, std::string_view word) {
    const size_t equals = word.find('=');
    const std::string_view key = word.substr(0, equals);
    const auto value = [&] { return number(equals == word.npos ? "" : word.substr(equals + 1), word); };
    if (key == "batch")
        p.batch = value();
    else if (key == "threads")
        p.threads = value();
    else if (key == "istride")
        p.in.stride = value();
    else if (key == "ostride")
        p.out.stride = value();
    else if (key == "idist")
        p.in.dist = value();
    else if (key == "odist")
        p.out.dist = value();
    else if (word == "forward" && p.kind == family::c2c)
        p.sign = -1;
    else if (word == "backward" && p.kind == family::c2c)
        p.sign = +1;
    else if (word == "inplace")
        p.in_place = true;
    else if (word == "interleaved")
        p.interleaved = true;
    else if (word == "measured")
        p.measured = true;
    else
        reject(word, "not a word of the problem language, or not for this kind" +
                         did_you_mean(word.substr(0, equals == word.npos ? equals : equals + 1), further_words));
}

// Rows of the real side are padded to whole complex numbers when a real transform runs in place.
void lay_out(const problem& p, side& s, bool complex_side) {
    const size_t last = p.n.size() - 1;
    const bool half = p.kind == family::r2c || p.kind == family::c2r;
    s.complex = complex_side;
    s.extent = p.n;
    if (half && complex_side) s.extent[last] = p.n[last] / 2 + 1;
    const int64_t row = half && !complex_side && p.in_place ? 2 * (int64_t{p.n[last]} / 2 + 1) : s.extent[last];
    if (s.stride == 0) s.stride = p.interleaved ? p.batch : 1;
    s.row_stride.assign(last + 1, s.stride);
    int64_t transform = last == 0 ? product(row, s.stride) : 0;
    for (size_t d = last; d-- > 0;) {
        s.row_stride[d] = product(s.row_stride[d + 1], d + 1 == last ? row : s.extent[d + 1]);
        transform = product(s.row_stride[d], s.extent[d]);
    }
    if (s.dist == 0) s.dist = p.interleaved ? 1 : transform;
    if (p.batch > 1 && s.dist > INT32_MAX)
        reject("batch=" + std::to_string(p.batch),
               "a transform has " + std::to_string(s.dist) + " elements, and the calls' distances go up to 2147483647");
}

std::string canonical(const problem& p, std::string_view kind, std::string_view sizes, const side& in,
                      const side& out) {
    std::string text = std::string(kind) + ' ' + std::string(sizes);
    const auto given = [&](const char* name, int64_t value, int64_t usual) {
        if (value != usual) text += ' ' + std::string(name) + '=' + std::to_string(value);
    };
    if (p.sign == +1) text += " backward";
    if (p.in_place) text += " inplace";
    given("batch", p.batch, 1);
    if (p.interleaved) text += " interleaved";
    given("istride", in.stride, 0);
    given("ostride", out.stride, 0);
    given("idist", in.dist, 0);
    given("odist", out.dist, 0);
    if (p.measured) text += " measured";
    given("threads", p.threads, 1);
    return text;
}

}  // namespace

problem parse_problem(std::string_view text) {
    auto words = split(text, " ,\t\r\n");
    std::erase(words, "");
    if (words.size() < 2) reject(text, "a kind and sizes are wanted");
    problem p;
    parse_kind(p, words[0]);
    parse_sizes(p, words[1]);
    for (size_t i = 2; i < words.size(); ++i) parse_word(p, words[i]);
    if (p.kind >= family::transpose && words.size() > 2 && (words.size() > 3 || !p.in_place))
        reject(words[2], "a movement of data takes no word but inplace");
    if (p.interleaved && p.in_place && (p.kind == family::r2c || p.kind == family::c2r))
        reject("interleaved", "real and complex elements of a batch side by side can't share their places");
    p.text = canonical(p, words[0], words[1], p.in, p.out);
    lay_out(p, p.in, p.kind != family::r2c && p.kind != family::r2r);
    lay_out(p, p.out, p.kind != family::c2r && p.kind != family::r2r);
    if (p.kind == family::transpose) p.out.row_stride = {1, p.n[0]};
    return p;
}

std::vector<std::string> read_list(const std::string& file) {
    std::ifstream in(file);
    if (!in) throw std::invalid_argument(file + ": can't be read");
    std::vector<std::string> result;
    for (std::string line; std::getline(in, line);) {
        line.resize(std::min(line.find('#'), line.size()));
        if (line.find_first_not_of(" \t\r") != line.npos) result.push_back(line);
    }
    return result;
}

problem spectrum_problem(const problem& p) {
    std::string sizes;
    for (int size : p.n) sizes += (sizes.empty() ? "" : "x") + std::to_string(size);
    return parse_problem("r2c " + sizes + " batch=" + std::to_string(p.batch));
}

double problem::points() const {
    double result = batch;
    for (int size : n) result *= size;
    return result;
}

double problem::nominal_flops() const {
    if (kind >= family::transpose) return 0;
    return (kind == family::c2c ? 5.0 : 2.5) * points() * std::log2(points() / batch);
}

double problem::bytes() const {
    const auto floats = [&](const side& s) {
        double result = batch * (s.complex ? 2.0 : 1.0);
        for (int size : s.extent) result *= size;
        return result;
    };
    return sizeof(float) * (floats(in) + floats(out));
}

bool problem::keeps_input() const { return !in_place && kind != family::c2r && kind != family::r2r; }

size_t span_floats(const problem& p, const side& s) {
    int64_t last = product(p.batch - 1, s.dist);
    for (size_t d = 0; d < s.extent.size(); ++d) {
        const int64_t more = product(s.extent[d] - 1, s.row_stride[d]);
        last = last > INT64_MAX / 4 - more ? INT64_MAX / 4 : last + more;
    }
    return static_cast<size_t>(std::min(last, INT64_MAX / 4) + 1) * (s.complex ? 2 : 1);
}

}  // namespace problems
