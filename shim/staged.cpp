// SPDX-License-Identifier: Apache-2.0
#include "shim/staged.h"

#include "include/qfftf.h"
#include "shim/strided_copy.h"

#include <atomic>
#include <cstdlib>

namespace {

// One transform of compact storage; `p` has the strides of that storage.
struct pass {
    fft_plan* plan;
    bool from_second;
    bool to_second;
};

constexpr int most_passes = most_dims + 1;

}  // namespace

// Compact storage is row-major, batch first. Real-to-complex and back use two arrays, one behind the other.
struct staged_plan {
    pass passes[most_passes];
    int pass_count;
    size_t second;  // floats from the first array to the second
    size_t bytes;
    float* storage;
    std::atomic<bool> lent;
};

namespace {

bool multiply(ptrdiff_t& product, ptrdiff_t factor) { return !__builtin_mul_overflow(product, factor, &product); }

// Elements of one side; false when they can't be counted.
bool count_elements(const problem& p, bool complex_side, ptrdiff_t& count) {
    count = 1;
    for (int b = 0; b < p.batch_rank; ++b)
        if (!multiply(count, p.batch[b].n)) return false;
    for (int d = 0; d < p.rank; ++d)
        if (!multiply(count, p.stored(d, complex_side))) return false;
    return count < (ptrdiff_t{1} << 48);
}

struct builder {
    staged_plan& s;
    const problem& p;
    bool measured;
    bool two_arrays;

    bool add(const problem& compact, bool from_second, bool to_second) {
        float* second = s.storage + s.second;
        const arrays a = {from_second ? second : s.storage, nullptr, to_second ? second : s.storage, nullptr};
        fft_plan* plan = library_plan(compact, a, measured);
        if (!plan) return false;
        s.passes[s.pass_count++] = {plan, from_second, to_second};
        return true;
    }

    ptrdiff_t batch_count() const {
        ptrdiff_t count = 1;
        for (int b = 0; b < p.batch_rank; ++b) count *= p.batch[b].n;
        return count;
    }

    // The last four dimensions, all that stands before them being the batch.
    bool add_last_dims() {
        if (p.rank == 0) return true;
        problem c = {};
        c.kind = p.kind;
        c.backward = p.backward;
        const int first = p.rank > max_rank ? p.rank - max_rank : 0;
        ptrdiff_t in_stride = 1, out_stride = 1, many = batch_count();
        for (int d = 0; d < first; ++d) many *= p.dims[d].n;
        c.rank = p.rank - first;
        for (int d = p.rank - 1; d >= first; --d) {
            c.dims[d - first] = {p.dims[d].n, in_stride, out_stride, p.dims[d].r2r_kind};
            in_stride *= p.stored(d, p.complex_in());
            out_stride *= p.stored(d, p.complex_out());
        }
        if (many > 1) c.batch[c.batch_rank++] = {many, in_stride, out_stride, 0};
        return add(c, false, two_arrays);
    }

    // One of the dimensions before the last four, in place.
    bool add_leading_dim(int d, bool in_second) {
        problem c = {};
        c.kind = p.kind == kind_r2r ? kind_r2r : kind_c2c;
        c.backward = p.backward || p.kind == kind_c2r;
        const bool complex_side = p.kind != kind_r2r;
        ptrdiff_t inner = 1, outer = batch_count();
        for (int k = d + 1; k < p.rank; ++k) inner *= p.stored(k, complex_side);
        for (int k = 0; k < d; ++k) outer *= p.dims[k].n;
        c.rank = 1;
        c.dims[0] = {p.dims[d].n, inner, inner, p.dims[d].r2r_kind};
        if (outer > 1) c.batch[c.batch_rank++] = {outer, p.dims[d].n * inner, p.dims[d].n * inner, 0};
        if (inner > 1) c.batch[c.batch_rank++] = {inner, 1, 1, 0};
        return add(c, in_second, in_second);
    }

    bool add_leading_dims(bool in_second) {
        for (int d = 0; d < p.rank - max_rank; ++d)
            if (!add_leading_dim(d, in_second)) return false;
        return true;
    }

    // The half of Hermitian data is complete in all other dimensions while it is complex.
    bool add_all() {
        if (p.kind == kind_c2r) return add_leading_dims(false) && add_last_dims();
        return add_last_dims() && add_leading_dims(two_arrays);
    }
};

// The plan's own storage for the first of several executions, an allocation for the others.
class lent_storage {
public:
    explicit lent_storage(staged_plan& s)
        : s_(s),
          own_(!s.lent.exchange(true, std::memory_order_acquire)),
          data_(own_ ? s.storage : static_cast<float*>(qsl_fftf_malloc(s.bytes))) {}
    ~lent_storage() {
        if (own_)
            s_.lent.store(false, std::memory_order_release);
        else
            qsl_fftf_free(data_);
    }
    lent_storage(const lent_storage&) = delete;
    lent_storage& operator=(const lent_storage&) = delete;
    float* data() const { return data_; }

private:
    staged_plan& s_;
    const bool own_;
    float* const data_;
};

}  // namespace

staged_plan* new_staged_plan(const problem& p, bool measured) {
    ptrdiff_t in_count, out_count;
    if (!count_elements(p, p.complex_in(), in_count) || !count_elements(p, p.complex_out(), out_count)) return nullptr;
    auto* s = static_cast<staged_plan*>(calloc(1, sizeof(staged_plan)));
    if (!s) return nullptr;
    const bool two_arrays = p.kind == kind_r2c || p.kind == kind_c2r;
    const size_t in_floats = static_cast<size_t>(in_count) * (p.complex_in() ? 2 : 1);
    const size_t out_floats = static_cast<size_t>(out_count) * (p.complex_out() ? 2 : 1);
    constexpr size_t line = 16;
    s->second = two_arrays ? (in_floats + line - 1) / line * line : 0;
    s->bytes = (s->second + (two_arrays ? out_floats : in_floats)) * sizeof(float);
    s->storage = static_cast<float*>(qsl_fftf_malloc(s->bytes));
    problem compact_view = p;
    compact_view.split = false;
    if (!s->storage || !builder{*s, compact_view, measured, two_arrays}.add_all()) {
        delete_staged_plan(s);
        return nullptr;
    }
    return s;
}

void delete_staged_plan(staged_plan* s) {
    if (!s) return;
    for (int k = 0; k < s->pass_count; ++k) qsl_fftf_destroy_plan(s->passes[k].plan);
    qsl_fftf_free(s->storage);
    free(s);
}

void execute_staged(staged_plan* s, const problem& p, const arrays& a) {
    const lent_storage storage(*s);
    float* first = storage.data();
    if (!first) return;
    float* second = first + s->second;
    gather(p, a.in, a.in_imag, first);
    for (int k = 0; k < s->pass_count; ++k)
        qsl_fftf_execute_r2r(s->passes[k].plan, s->passes[k].from_second ? second : first,
                             s->passes[k].to_second ? second : first);
    scatter(p, second, a.out, a.out_imag);
}

fft_plan* staged_pass(const staged_plan* s, int k) { return k < s->pass_count ? s->passes[k].plan : nullptr; }
