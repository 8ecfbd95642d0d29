// SPDX-License-Identifier: Apache-2.0
// Errors of single-precision transforms against a library in double precision, relative and in units of
// 2^-24 sqrt(log2 n): the growth that rounding at random would show.
#include "bench/accuracy/direct_sum.h"
#include "bench/runner.h"

#include <cmath>
#include <cstdio>
#include <sstream>
#include <stdexcept>

namespace {

using namespace bench;

constexpr const char usage[] =
    "usage: qfftf_accuracy [OPTION ...] [PROBLEM ...]\n"
    "  PROBLEM          as qfftf_bench takes it, or with lengths in place of a size: \"c2c 1-64,100 backward\"\n"
    "  --list FILE      problems from a file, one per line\n"
    "  --library FILE   a single-precision library, once for each; by default this library and libfftw3f.so.3\n"
    "  --reference FILE the double-precision library (default libfftw3.so.3)\n"
    "  --input NAME     uniform (numbers in [-0.5, 0.5)), impulse (one 1 among zeros) or range (2^-20 to 2^20 and the\n"
    "                   negative ones, evenly by logarithm), once for each; by default all\n"
    "  --check N        compare the reference with the defining sum for plain problems up to length N (default 32)\n"
    "One CSV line per problem, input and library: the L2 norm of the error over that of the result, the largest error\n"
    "over the largest part of a result, and both in units, of which the first is what the limits are stated in.\n";

struct named_input {
    const char* name;
    input_kind kind;
};
constexpr named_input named_inputs[] = {
    {"uniform", input_kind::uniform}, {"impulse", input_kind::impulse}, {"range", input_kind::range}};

struct options {
    std::vector<problem> problems;
    std::vector<std::string> libraries;
    std::vector<named_input> inputs;
    std::string reference = "libfftw3.so.3";
    int check = 32;
};

// One problem, or with a list of lengths in place of its size, one for each length.
void add_problems(const std::string& text, std::vector<problem>& problems) {
    const size_t begin = std::min(text.find(' '), text.size() - 1) + 1,
                 end = std::min(text.find(' ', begin), text.size());
    const std::string kind = text.substr(0, begin), lengths = text.substr(begin, end - begin), rest = text.substr(end);
    if (lengths.find_first_not_of("0123456789,-") != lengths.npos) return problems.push_back(parse_problem(text));
    std::istringstream ranges(lengths);
    for (std::string range; std::getline(ranges, range, ',');) {
        const size_t dash = range.find('-');
        const int first = std::stoi(range), last = dash == range.npos ? first : std::stoi(range.substr(dash + 1));
        for (int n = first; n <= last; ++n) {
            std::string words = kind;
            problems.push_back(parse_problem(words.append(std::to_string(n)).append(rest)));
        }
    }
}

named_input parse_input(const std::string& name) {
    for (const named_input& input : named_inputs)
        if (name == input.name) return input;
    throw std::invalid_argument(name + ": not an input");
}

options parse_options(int argc, char** argv) {
    options o;
    for (int i = 1; i < argc; ++i) {
        const std::string word = argv[i];
        const auto value = [&]() -> std::string {
            if (++i == argc) throw std::invalid_argument(word + " wants a value");
            return argv[i];
        };
        if (word == "--list")
            for (const std::string& line : read_list(value())) add_problems(line, o.problems);
        else if (word == "--library")
            o.libraries.push_back(value());
        else if (word == "--reference")
            o.reference = value();
        else if (word == "--input")
            o.inputs.push_back(parse_input(value()));
        else if (word == "--check")
            o.check = std::stoi(value());
        else if (word.starts_with("-"))
            throw std::invalid_argument(word + ": not an option");
        else
            add_problems(word, o.problems);
    }
    if (o.problems.empty()) throw std::invalid_argument("no problem given");
    if (o.inputs.empty()) o.inputs.assign(std::begin(named_inputs), std::end(named_inputs));
    if (o.libraries.empty()) o.libraries = {QFFTF_DEFAULT_LIBRARY, "libfftw3f.so.3"};
    return o;
}

// Executes the problem on a copy of the input; false when the library refuses it.
template <typename Real>
bool transform(library<Real>& lib, const problem& p, const arrays<double>& input, arrays<Real>& data) {
    void* plan = lib.plan(p, data.in(), data.out());
    if (!plan) return false;
    data.clear();
    std::copy_n(input.in(), input.in_span(), data.in());
    lib.execute(plan);
    lib.destroy(plan);
    return true;
}

// The reference itself, by the sum, for problems that are simple enough.
void check_reference(const problem& p, const arrays<double>& input, const double* result, int longest) {
    const bool plain = p.n.size() == 1 && p.batch == 1 && p.in.stride == 1 && p.out.stride == 1;
    if (!plain || p.n[0] > longest) return;
    std::vector<double> sum(span_floats(p, p.out));
    direct_sum(p, input.in(), sum.data());
    const double distance = relative_distances(p, result, sum.data()).l2;
    if (!(distance < 1e-14))
        throw std::runtime_error(p.text + ": the reference is " + std::to_string(distance) + " from the defining sum");
}

void report(const options& o, const problem& p, const named_input& kind,
            const std::vector<std::unique_ptr<library<float>>>& libraries, library<double>& reference) {
    arrays<double> input(p), exact(p);
    input.fill(p, reference, kind.kind);
    if (!transform(reference, p, input, exact)) throw std::runtime_error(reference.name() + " refuses " + p.text);
    check_reference(p, input, exact.out(), o.check);
    for (const auto& lib : libraries) {
        arrays<float> data(p);
        if (!transform(*lib, p, input, data)) {
            fprintf(stderr, "qfftf_accuracy: %s refuses %s\n", lib->name().c_str(), p.text.c_str());
            continue;
        }
        const double n = p.points() / p.batch, unit = 0x1p-24 * std::sqrt(std::log2(std::max(n, 2.0)));
        const distances error = relative_distances(p, data.out(), exact.out());
        printf("%s,%s,%s,%.0f,%.4g,%.4g,%.4f,%.4f\n", p.text.c_str(), kind.name, lib->name().c_str(), n, error.l2,
               error.max, error.l2 / unit, error.max / unit);
    }
    fflush(stdout);
}

}  // namespace

int main(int argc, char** argv) try {
    const options o = parse_options(argc, argv);
    const auto reference = open_library<double>(o.reference);
    std::vector<std::unique_ptr<library<float>>> libraries;
    libraries.reserve(o.libraries.size());
    for (const std::string& file : o.libraries) libraries.push_back(open_library<float>(file));
    puts("problem,input,library,n,l2_error,max_error,l2_units,max_units");
    for (const problem& p : o.problems)
        for (const named_input& input : o.inputs) report(o, p, input, libraries, *reference);
} catch (const std::exception& error) {
    fprintf(stderr, "qfftf_accuracy: %s\n%s", error.what(), usage);
    return 2;
}
