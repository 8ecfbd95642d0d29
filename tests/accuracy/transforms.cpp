// SPDX-License-Identifier: Apache-2.0
#include "tests/accuracy/transforms.h"

#include "include/qfftf.h"
#include "tests/support/reference_dft.h"

namespace {

using reference::complex;

bool is_complex_in(transform t) { return t <= transform::c2c_backward || t == transform::c2r; }
bool is_complex_out(transform t) { return t <= transform::r2c; }

// Half-complex order: the real parts up, then the imaginary parts down.
std::vector<double> half_complex(const std::vector<complex>& spectrum) {
    const size_t n = spectrum.size();
    std::vector<double> out(n);
    for (size_t k = 0; k < n; ++k) out[k] = 2 * k <= n ? spectrum[k].real() : spectrum[n - k].imag();
    return out;
}

// The whole spectrum from its first half, `at(k)` for k up to n / 2; its imaginary parts of 0 and n / 2 don't count.
template <class At>
std::vector<double> real_backward(size_t n, At at) {
    std::vector<complex> spectrum(n);
    for (size_t k = 0; 2 * k <= n; ++k) {
        spectrum[k] = k == 0 || 2 * k == n ? complex(at(k).real()) : at(k);
        if (k) spectrum[n - k] = std::conj(spectrum[k]);
    }
    std::vector<double> out;
    for (const complex& z : reference::dft(spectrum, 1)) out.push_back(z.real());
    return out;
}

// The cosine and sine kinds are the sums of weight x[j] f(2 pi (2j + p)(2k + q) / 8N), N = n + extra: the elements at
// odd or even places of a sequence of 8N, of whose spectrum every other coefficient is wanted.
struct trigonometric_kind {
    bool sine;
    int p, q, extra;
    bool first_once, last_once;  // whether the first, the last element has weight 1; else it is 2
};
constexpr trigonometric_kind trigonometric_kinds[] = {
    {false, 0, 0, -1, true, true},   // redft00
    {false, 0, 1, 0, true, false},   // redft01
    {false, 1, 0, 0, false, false},  // redft10
    {false, 1, 1, 0, false, false},  // redft11
    {true, 2, 2, 1, false, false},   // rodft00
    {true, 2, 1, 0, false, true},    // rodft01
    {true, 1, 2, 0, false, false},   // rodft10
    {true, 1, 1, 0, false, false},   // rodft11
};

std::vector<double> trigonometric(const trigonometric_kind& kind, size_t n, const std::vector<float>& x) {
    std::vector<complex> sequence(8 * (n + size_t(kind.extra)));
    for (size_t j = 0; j < n; ++j) {
        const bool once = (j == 0 && kind.first_once) || (j == n - 1 && kind.last_once);
        sequence[2 * j + size_t(kind.p)] = (once ? 1.0 : 2.0) * x[j];
    }
    const std::vector<complex> spectrum = reference::dft(sequence, -1);
    std::vector<double> out(n);
    for (size_t k = 0; k < n; ++k) {
        const complex& z = spectrum[2 * k + size_t(kind.q)];
        out[k] = kind.sine ? -z.imag() : z.real();
    }
    return out;
}

std::vector<double> parts_of(const std::vector<complex>& z, size_t count) {
    std::vector<double> parts;
    for (size_t k = 0; k < count; ++k) parts.insert(parts.end(), {z[k].real(), z[k].imag()});
    return parts;
}

complex element(const std::vector<float>& x, size_t k) { return {x[2 * k], x[2 * k + 1]}; }

qsl_fftf_plan plan_of(transform t, int n, float* in, float* out) {
    const auto a = reinterpret_cast<qsl_fftf_complex*>(in), b = reinterpret_cast<qsl_fftf_complex*>(out);
    switch (t) {
        case transform::c2c:
        case transform::c2c_backward:
            return qsl_fftf_plan_dft_1d(n, a, b, t == transform::c2c ? QSL_FFTF_FORWARD : QSL_FFTF_BACKWARD,
                                        QSL_FFTF_RULES);
        case transform::r2c:
            return qsl_fftf_plan_dft_r2c_1d(n, in, b, QSL_FFTF_RULES);
        case transform::c2r:
            return qsl_fftf_plan_dft_c2r_1d(n, a, out, QSL_FFTF_RULES);
        default:
            return qsl_fftf_plan_r2r_1d(n, in, out, unsigned(t) - unsigned(transform::r2hc), QSL_FFTF_RULES);
    }
}

}  // namespace

const char* name_of(transform t) {
    constexpr const char* names[transform_count] = {"c2c",     "c2c backward", "r2c",     "c2r",     "r2hc",
                                                    "hc2r",    "dht",          "redft00", "redft01", "redft10",
                                                    "redft11", "rodft00",      "rodft01", "rodft10", "rodft11"};
    return names[int(t)];
}

size_t floats_in(transform t, int n) { return t == transform::c2r ? n / 2 * 2 + 2 : is_complex_in(t) ? 2 * n : n; }
size_t floats_out(transform t, int n) { return t == transform::r2c ? n / 2 * 2 + 2 : is_complex_out(t) ? 2 * n : n; }

int deciding_length(transform t, int n) {
    return t == transform::redft00 ? n - 1 : t == transform::rodft00 ? n + 1 : n;
}

int largest_prime_factor(int n) {
    int largest = 1;
    for (int p = 2; n > 1; ++p)
        for (; n % p == 0; n /= p) largest = p;
    return largest;
}

std::vector<float> by_library(transform t, int n, const std::vector<float>& in) {
    std::vector<float> input = in, out(floats_out(t, n));
    qsl_fftf_plan plan = plan_of(t, n, input.data(), out.data());
    if (!plan) return {};
    qsl_fftf_execute(plan);
    qsl_fftf_destroy_plan(plan);
    return out;
}

std::vector<double> by_reference(transform t, int length, const std::vector<float>& in) {
    const auto n = size_t(length);
    if (t >= transform::redft00) return trigonometric(trigonometric_kinds[int(t) - int(transform::redft00)], n, in);
    if (t == transform::c2r) return real_backward(n, [&](size_t k) { return element(in, k); });
    if (t == transform::hc2r)
        return real_backward(n, [&](size_t k) { return complex(in[k], k == 0 || 2 * k == n ? 0 : in[n - k]); });
    std::vector<complex> x(n);
    for (size_t j = 0; j < n; ++j) x[j] = is_complex_in(t) ? element(in, j) : complex(in[j]);
    const std::vector<complex> spectrum = reference::dft(x, t == transform::c2c_backward ? 1 : -1);
    if (t <= transform::c2c_backward) return parts_of(spectrum, n);
    if (t == transform::r2c) return parts_of(spectrum, n / 2 + 1);
    std::vector<double> out = half_complex(spectrum);
    if (t == transform::dht)
        for (size_t k = 0; k < n; ++k) out[k] = spectrum[k].real() - spectrum[k].imag();
    return out;
}
