// SPDX-License-Identifier: Apache-2.0
// convolution FOLDER SOUND
// A voice in a room: the recording convolved with the impulse response of a hall of 14 x 10 x 5 m, which the method of
// image sources gives (Allen and Berkley 1979). One transform of each, a product, one transform back. Also writes the
// sound.
#include <algorithm>
#include <cmath>
#include <complex>
#include <cstdio>
#include <numeric>
#include <qfftf.hpp>

#include "files.h"

// Every wall mirrors the source, and mirrors its mirrors: each image is heard after its distance, weaker by it.
std::vector<float> impulse_response(int rate) {
    constexpr double size[3] = {14, 10, 5}, voice[3] = {4, 3, 1.7}, ear[3] = {11, 7, 1.2}, reflected = 0.83;
    std::vector<float> h(size_t(1.2 * rate));
    constexpr int reach = 14;
    for (int a = -reach; a <= reach; ++a)
        for (int b = -reach; b <= reach; ++b)
            for (int c = -reach; c <= reach; ++c) {
                double square = 0;
                const int image[3] = {a, b, c};
                for (int k = 0; k < 3; ++k) {
                    const double place = image[k] * size[k] + (image[k] % 2 ? size[k] - voice[k] : voice[k]);
                    square += (place - ear[k]) * (place - ear[k]);
                }
                const double distance = std::sqrt(square);
                const auto delay = size_t(distance / 343 * rate);
                const double amplitude = std::pow(reflected, std::abs(a) + std::abs(b) + std::abs(c)) / distance;
                if (delay < h.size()) h[delay] += float(amplitude);
            }
    return h;
}

int good_length(int n) {
    for (;; n += 2) {
        int rest = n;
        for (int p = 2; p <= 7; ++p)
            while (rest % p == 0) rest /= p;
        if (rest == 1) return n;
    }
}

int main(int argc, char** argv) {
    if (argc != 3) fail("name a folder to write to and a sound file");
    plot_folder plot(argv[1]);
    const sound dry = read_sound(argv[2]);
    const std::vector<float> h = impulse_response(dry.rate);

    const int length = int(dry.samples.size() + h.size()) - 1, n = good_length(length + length % 2);
    std::vector<float> a(n), b(n);
    std::copy(dry.samples.begin(), dry.samples.end(), a.begin());
    std::copy(h.begin(), h.end(), b.begin());
    std::vector<std::complex<float>> spectrum(n / 2 + 1), response(n / 2 + 1);
    const auto forward = qfftf::plan_r2c({n}, a, spectrum);
    const auto backward = qfftf::plan_c2r({n}, spectrum, b);
    forward();
    forward(b, response);
    for (size_t k = 0; k < spectrum.size(); ++k) spectrum[k] *= response[k] / float(n);
    backward();
    b.resize(length);

    double worst = 0, largest = 0;
    for (int t = 0; t < length; t += length / 50) {  // some of the sums that define a convolution
        double sum = 0;
        for (int j = std::max(0, t - int(h.size()) + 1); j <= std::min(t, int(dry.samples.size()) - 1); ++j)
            sum += double(dry.samples[j]) * h[t - j];
        worst = std::max(worst, std::abs(sum - b[t]));
        largest = std::max(largest, std::abs(sum));
    }
    std::printf("%zu samples with %zu by transforms of %d; error of the sums %.1e\n", dry.samples.size(), h.size(), n,
                worst / largest);
    if (!(worst < 1e-5 * largest)) fail("which is too large");

    const float loudest =
        std::abs(*std::max_element(b.begin(), b.end(), [](float x, float y) { return std::abs(x) < std::abs(y); }));
    for (float& x : b) x *= 0.9f / loudest;
    write_sound(plot.file("hall.wav"), {b, dry.rate});
    plot.array("before", dry.samples);
    plot.array("response", h);
    plot.array("after", b);
    plot.value("rate", dry.rate);
    plot.value("last", double(length) / dry.rate);
}
