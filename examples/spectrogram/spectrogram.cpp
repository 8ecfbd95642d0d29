// SPDX-License-Identifier: Apache-2.0
// spectrogram PICTURE.png SOUND...
// Draws how the frequencies in a recording change over time: overlapping pieces of 1024 samples, a Hann window on each,
// one real transform per piece. Several sound files are drawn one after the other.
#include <qfftf.h>
#include <sndfile.h>

#include <algorithm>
#include <cmath>
#include <complex>
#include <cstdio>
#include <cstdlib>
#include <numeric>
#include <string>
#include <vector>

#include "draw.h"

namespace {

constexpr int points = 1024;     // of one transform
constexpr int hop = points / 4;  // between the starts of two pieces
constexpr double pi = 3.14159265358979323846;

struct recording {
    std::vector<float> samples;
    int rate = 0;
};

[[noreturn]] void fail(const std::string& reason) {
    std::fprintf(stderr, "spectrogram: %s\n", reason.c_str());
    std::exit(1);
}

// Appends a sound file, its channels mixed to one.
void append(recording& sound, const char* file) {
    SF_INFO info = {};
    SNDFILE* handle = sf_open(file, SFM_READ, &info);
    if (!handle) {
        fail(std::string(file) + ": " + sf_strerror(nullptr));
    }
    if (sound.rate != 0 && sound.rate != info.samplerate) {
        fail(std::string(file) + " has another sampling rate than the files before it");
    }
    sound.rate = info.samplerate;
    std::vector<float> frame(info.channels);
    while (sf_readf_float(handle, frame.data(), 1) == 1) {
        float sum = 0;
        for (const float sample : frame) {
            sum += sample;
        }
        sound.samples.push_back(sum / info.channels);
    }
    sf_close(handle);
}

// Pieces start before the recording and end behind it, so that every sample lies in points / hop of them.
spectrum_over_time transform(const std::vector<float>& samples) {
    std::vector<float> window(points);
    for (int j = 0; j < points; ++j) {
        window[j] = static_cast<float>(0.5 - 0.5 * std::cos(2 * pi * j / points));
    }
    std::vector<float> in(points);
    std::vector<std::complex<float>> out(points / 2 + 1);  // a real signal's other bins mirror these
    qsl_fftf_plan plan =
        qsl_fftf_plan_dft_r2c_1d(points, in.data(), reinterpret_cast<qsl_fftf_complex*>(out.data()), QSL_FFTF_RULES);
    if (!plan) {
        fail("there is no plan for this transform");
    }
    spectrum_over_time spectrum;
    const long count = static_cast<long>(samples.size());
    for (long start = hop - points; start < count; start += hop) {
        for (long j = 0; j < points; ++j) {
            const bool inside = start + j >= 0 && start + j < count;
            in[j] = inside ? window[j] * samples[start + j] : 0.0f;
        }
        qsl_fftf_execute(plan);
        std::vector<double> power(out.size());
        std::transform(out.begin(), out.end(), power.begin(),
                       [](auto x) { return std::norm(std::complex<double>(x)); });
        spectrum.push_back(power);
    }
    qsl_fftf_destroy_plan(plan);
    return spectrum;
}

// Parseval: the power of all bins, those of the mirrored half included, is points times the power of the windowed
// samples, and the squares of the windows that lie over one sample add up to 3/8 per window.
double energy_difference(const spectrum_over_time& spectrum, const std::vector<float>& samples) {
    double in_spectrum = 0, in_signal = 0;
    for (const auto& power : spectrum) {
        in_spectrum += 2 * std::accumulate(power.begin() + 1, power.end() - 1, 0.0) + power.front() + power.back();
    }
    for (const double sample : samples) {
        in_signal += sample * sample;
    }
    return std::abs(in_spectrum / (points * 3.0 / 8.0 * (points / hop)) / in_signal - 1);
}

}  // namespace

int main(int argument_count, char** arguments) {
    if (argument_count < 3) {
        fail("name a picture to write and at least one sound file");
    }
    recording sound;
    std::for_each(arguments + 2, arguments + argument_count, [&](const char* file) { append(sound, file); });
    if (sound.samples.empty()) {
        fail("there is no sound in these files");
    }
    std::printf("read        %.1f s of sound, %zu samples at %d Hz\n",
                static_cast<double>(sound.samples.size()) / sound.rate, sound.samples.size(), sound.rate);

    const spectrum_over_time spectrum = transform(sound.samples);
    std::printf("transformed %zu pieces of %d points\n", spectrum.size(), points);

    const double difference = energy_difference(spectrum, sound.samples);
    std::printf("checked     the energy of the spectrum is that of the signal within %.1e (Parseval)\n", difference);
    if (!(difference < 1e-5)) {
        fail("which is too far away");
    }
    if (!draw(spectrum, static_cast<double>(hop) / sound.rate, sound.rate).write_png(arguments[1])) {
        fail(std::string("cannot write ") + arguments[1]);
    }
    std::printf("wrote       %s\n", arguments[1]);
}
