// SPDX-License-Identifier: Apache-2.0
#include "bench/library.h"

#include <dlfcn.h>

#include <algorithm>
#include <cstring>
#include <stdexcept>

namespace bench {
namespace {

struct iodim64 {
    int64_t n, is, os;
};

// The planning, execution and release calls, with the plan as an untyped pointer and pairs as two reals.
template <typename Real>
struct calls {
    void* (*many_dft)(int, const int*, int, Real*, const int*, int, int, Real*, const int*, int, int, int, unsigned);
    void* (*many_r2c)(int, const int*, int, Real*, const int*, int, int, Real*, const int*, int, int, unsigned);
    decltype(many_r2c) many_c2r;
    void* (*many_r2r)(int, const int*, int, Real*, const int*, int, int, Real*, const int*, int, int, const int*,
                      unsigned);
    void* (*guru64)(int, const iodim64*, int, const iodim64*, Real*, Real*, int, unsigned);
    void (*execute)(void*);
    void (*destroy)(void*);
    int (*init_threads)();
    void (*with_nthreads)(int);
    void (*forget_wisdom)();
};

// What differs between the libraries that speak these calls. Flags of zero mean "measure" to one, "by rules" to the
// other.
struct dialect {
    const char* prefix;
    size_t real_size;
    unsigned rules, measured;
};
constexpr dialect dialects[] = {
    {"qsl_fftf_", sizeof(float), 0, 32},
    {"fftwf_", sizeof(float), 64, 0},
    {"fftw_", sizeof(double), 64, 0},
};

template <typename Real>
class fft_library final : public library<Real> {
public:
    explicit fft_library(const std::string& file) {
        handle_ = dlopen(file.c_str(), RTLD_NOW | RTLD_LOCAL);
        if (!handle_) throw std::runtime_error(dlerror());
        this->name_ = file.substr(file.rfind('/') + 1);
        for (const dialect& d : dialects)
            if (d.real_size == sizeof(Real) && dlsym(handle_, (std::string(d.prefix) + "execute").c_str()))
                speaks_ = &d;
        if (!speaks_) throw std::runtime_error(file + ": none of the known calls for this precision");
        find(calls_.execute, "execute");
        find(calls_.destroy, "destroy_plan");
        find(calls_.many_dft, "plan_many_dft");
        find(calls_.many_r2c, "plan_many_dft_r2c");
        find(calls_.many_c2r, "plan_many_dft_c2r");
        find(calls_.many_r2r, "plan_many_r2r");
        find(calls_.guru64, "plan_guru64_dft");
        find(calls_.init_threads, "init_threads");
        find(calls_.with_nthreads, "plan_with_nthreads");
        find(calls_.forget_wisdom, "forget_wisdom");
    }

    void* plan(const problem& p, Real* in, Real* out) override {
        set_threads(p.threads);
        const unsigned flags = p.measured ? speaks_->measured : speaks_->rules;
        const int rank = static_cast<int>(p.n.size());
        const auto many = [&](auto call, auto... tail) {
            return call(rank, p.n.data(), p.batch, in, nullptr, p.in.stride, p.in.dist, out, nullptr, p.out.stride,
                        p.out.dist, tail..., flags);
        };
        switch (p.kind) {
            case family::c2c:
                return many(need(calls_.many_dft), p.sign);
            case family::r2c:
                return many(need(calls_.many_r2c));
            case family::c2r:
                return many(need(calls_.many_c2r));
            case family::r2r:
                return many(need(calls_.many_r2r), p.r2r_kinds.data());
            default:
                return move_data(p, in, out, flags);
        }
    }
    void execute(void* plan) override { calls_.execute(plan); }
    void destroy(void* plan) override { calls_.destroy(plan); }
    void forget() override {
        if (calls_.forget_wisdom) calls_.forget_wisdom();
    }

private:
    template <typename Function>
    void find(Function& call, const char* name) {
        call = reinterpret_cast<Function>(dlsym(handle_, (std::string(speaks_->prefix) + name).c_str()));
    }
    template <typename Function>
    Function need(Function call) const {
        if (!call) throw std::runtime_error(this->name_ + " lacks the planning call for this kind");
        return call;
    }
    void set_threads(int count) {
        if (count == std::max(threads_, 1)) return;
        if (threads_ == 0) need(calls_.init_threads)();
        need(calls_.with_nthreads)(count);
        threads_ = count;
    }
    // A transform of rank 0 over a batch of rows and columns.
    void* move_data(const problem& p, Real* in, Real* out, unsigned flags) {
        iodim64 batch[2], none{};
        for (int d : {0, 1}) batch[d] = {p.n[d], p.in.row_stride[d], p.out.row_stride[d]};
        return need(calls_.guru64)(0, &none, 2, batch, in, out, -1, flags);
    }

    void* handle_ = nullptr;
    const dialect* speaks_ = nullptr;
    calls<Real> calls_{};
    int threads_ = 0;  // 0: the threads were never needed
};

template <typename Real>
class memcpy_library final : public library<Real> {
    struct copy {
        Real *in, *out;
        size_t bytes;
    };

public:
    memcpy_library() { this->name_ = "memcpy"; }
    void* plan(const problem& p, Real* in, Real* out) override {
        if (p.kind < family::transpose || p.in_place) return nullptr;
        return new copy{in, out, span_floats(p, p.in) * sizeof(Real)};
    }
    void execute(void* plan) override {
        const copy* c = static_cast<copy*>(plan);
        memcpy(c->out, c->in, c->bytes);
    }
    void destroy(void* plan) override { delete static_cast<copy*>(plan); }
    void forget() override {}
};

}  // namespace

template <typename Real>
std::unique_ptr<library<Real>> open_library(const std::string& file) {
    if (file == "memcpy") return std::make_unique<memcpy_library<Real>>();
    return std::make_unique<fft_library<Real>>(file);
}

template std::unique_ptr<library<float>> open_library(const std::string&);
template std::unique_ptr<library<double>> open_library(const std::string&);

}  // namespace bench
