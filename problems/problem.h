// SPDX-License-Identifier: Apache-2.0
// The problem language: one line of words names a transform, its sizes, its layout and how it is planned.
// docs/developer/performance.md shows it with examples.
//
//   KIND SIZES [WORD ...]           words are separated by blanks or commas, their order after SIZES is free
//   KIND    c2c r2c c2r | r2hc hc2r dht redft00 ... rodft11, one for all dimensions or one each: redft10/dht |
//           transpose copy (of complex elements, ROWSxCOLUMNS)
//   SIZES   1 to 4 numbers, slowest first: 1024, 64x64 (real sizes for r2c and c2r)
//   WORD    forward backward | inplace | batch=N | interleaved (the batch side by side, not one after the other) |
//           istride=N ostride=N idist=N odist=N | measured | threads=N
#pragma once
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace problems {

enum class family { c2c, r2c, c2r, r2r, transpose, copy };

// One side of a problem as the planning calls take it, in elements of that side's own type.
struct side {
    int stride = 0;                   // 0 where a problem is parsed: not given
    int64_t dist = 0;                 // likewise
    bool complex = false;             // elements are pairs of floats
    std::vector<int> extent;          // logical sizes of this side
    std::vector<int64_t> row_stride;  // elements between neighbours of each dimension
};

struct problem {
    std::string text;  // canonical form, the name in every table
    family kind = family::c2c;
    std::vector<int> r2r_kinds;  // numbers of the planning calls, one per dimension
    std::vector<int> n;
    int sign = -1;
    bool in_place = false, interleaved = false, measured = false;
    int batch = 1, threads = 1;
    side in, out;

    double points() const;         // of the whole batch
    double nominal_flops() const;  // 5 N log2 n, half of it for real data; 0 for movements of data
    double bytes() const;          // of all elements on both sides, which is the least that must move
    bool keeps_input() const;      // so that it can run again and again on the same data
};

// Throws std::invalid_argument, which names the word it stumbled over.
problem parse_problem(std::string_view text);

// The lines of a list of problems that say something; # begins a comment. Throws when the file can't be read.
std::vector<std::string> read_list(const std::string& file);

// The compact r2c problem of the same sizes and batch: its result is Hermitian, so it is a fair input for c2r.
problem spectrum_problem(const problem& p);

// Floats between the first element of a side and the end of its last one, gaps included; the largest number if there
// are more.
size_t span_floats(const problem& p, const side& s);

// Calls visit(float offset) for every element of every transform of the batch.
template <typename Visit>
void for_each_element(const problem& p, const side& s, Visit visit) {
    std::vector<int> at(s.extent.size());
    for (int b = 0; b < p.batch; ++b) {
        at.assign(at.size(), 0);
        for (bool more = true; more;) {
            size_t offset = static_cast<size_t>(b) * static_cast<size_t>(s.dist);
            for (size_t d = 0; d < at.size(); ++d)
                offset += static_cast<size_t>(at[d]) * static_cast<size_t>(s.row_stride[d]);
            visit(offset * (s.complex ? 2 : 1));
            more = false;
            for (size_t d = at.size(); d-- > 0 && !more;) {
                more = ++at[d] < s.extent[d];
                if (!more) at[d] = 0;
            }
        }
    }
}

}  // namespace problems
