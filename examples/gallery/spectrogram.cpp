// SPDX-License-Identifier: Apache-2.0
// spectrogram FOLDER SOUND...
// How the frequencies in a recording change over time: overlapping pieces of 1024 samples, a Hann window on each, one
// real transform per piece. The words that are spoken are the names of the files.
#include <algorithm>
#include <cmath>
#include <complex>
#include <cstdio>
#include <filesystem>
#include <numbers>
#include <numeric>
#include <qfftf.hpp>

#include "files.h"

constexpr int points = 1024, hop = points / 4, bins = points / 2 + 1;

int main(int argc, char** argv) {
    if (argc < 3) fail("name a folder to write to and at least one sound file");
    plot_folder plot(argv[1]);
    sound all;
    std::string words;
    for (int a = 2; a < argc; ++a) {
        const sound s = read_sound(argv[a]);
        if (all.rate != 0 && all.rate != s.rate)
            fail(std::string(argv[a]) + " has another sampling rate than the others");
        all.rate = s.rate;
        std::string word = std::filesystem::path(argv[a]).stem();
        std::replace(word.begin(), word.end(), '_', ' ');
        const double middle = (double(all.samples.size()) + double(s.samples.size()) / 2) / s.rate;
        words += "set label '" + word + "' at " + std::to_string(middle) + ", graph 1.03 center\n";
        all.samples.insert(all.samples.end(), s.samples.begin(), s.samples.end());
    }
    std::ofstream(plot.file("words.gp")) << words;

    std::vector<float> window(points), in(points);
    for (int j = 0; j < points; ++j) window[j] = float(0.5 - 0.5 * std::cos(2 * std::numbers::pi * j / points));
    std::vector<std::complex<float>> out(bins);
    const auto transform = qfftf::plan_r2c({points}, in, out);

    // Pieces start before the recording and end behind it, so that every sample lies in points / hop of them.
    const long count = long(all.samples.size()), pieces = (count + points - 2) / hop;
    std::vector<float> power(size_t(bins) * pieces);  // power[bin][piece]
    double in_spectrum = 0, in_signal = 0;
    for (long piece = 0; piece < pieces; ++piece) {
        const long start = (piece + 1) * hop - points;
        for (long j = 0; j < points; ++j) {
            const bool inside = start + j >= 0 && start + j < count;
            in[j] = inside ? window[j] * all.samples[start + j] : 0.0f;
        }
        transform();
        for (int bin = 0; bin < bins; ++bin) {
            power[size_t(bin) * pieces + piece] = std::norm(out[bin]);
            in_spectrum += std::norm(std::complex<double>(out[bin])) * (bin == 0 || bin == bins - 1 ? 1 : 2);
        }
    }
    // Parseval: the squares of the windows over one sample add up to 3/8 for each window.
    for (const double sample : all.samples) in_signal += sample * sample;
    const double difference = std::abs(in_spectrum / (points * 3.0 / 8.0 * (points / hop)) / in_signal - 1);
    std::printf("%ld pieces of %d points; the energy is that of the signal within %.1e\n", pieces, points, difference);
    if (!(difference < 1e-5)) fail("which is too far away");

    const float loudest = *std::max_element(power.begin(), power.end());
    for (float& p : power) p = 10 * std::log10(std::max(p / loudest, 1e-12f));
    plot.array("decibels", power);
    plot.value("pieces", double(pieces));
    plot.value("bins", bins);
    plot.value("seconds", double(hop) / all.rate);
    plot.value("kilohertz", 0.001 * all.rate / points);
}
