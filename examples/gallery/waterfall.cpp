// SPDX-License-Identifier: Apache-2.0
// waterfall FOLDER
// A receiver's waterfall: 600 spectra of 1024 points, one batch, of a band of 240 kHz in which a broadcast, a sweep,
// Morse code and a hopping transmitter are buried in noise. Samples are complex, so frequencies are positive and
// negative.
#include <algorithm>
#include <cmath>
#include <complex>
#include <cstdio>
#include <numbers>
#include <qfftf.hpp>
#include <random>
#include <string_view>

#include "files.h"

using sample = std::complex<float>;
constexpr int points = 1024, lines = 600, hop = 512, rate = 240000;
constexpr double turn = 2 * std::numbers::pi;

struct transmitter {
    double phase = 0;
    sample operator()(double hertz, double amplitude) {
        phase = std::fmod(phase + turn * hertz / rate, turn);
        return std::polar(float(amplitude), float(phase));
    }
};

std::vector<sample> receive() {
    std::vector<sample> band(size_t(lines - 1) * hop + points);
    std::mt19937 engine(1);
    std::normal_distribution<float> noise(0, 1);
    transmitter broadcast, sweep, morse, hopper;
    constexpr std::string_view code = "=== = === =   === === = ===   ";  // C Q
    for (size_t t = 0; t < band.size(); ++t) {
        const double s = double(t) / rate;
        const double voice = std::sin(turn * 3.1 * s) * std::sin(turn * 190 * s) +
                             0.6 * std::sin(turn * 430 * s + 4 * std::sin(turn * 2 * s));
        band[t] = {noise(engine), noise(engine)};
        band[t] += broadcast(-70e3 + 9e3 * voice, 1.2);
        band[t] += sweep(-30e3 + 40e3 * std::fmod(s, 0.6) / 0.6, 0.35);
        band[t] += morse(45e3, code[size_t(s / 0.03) % code.size()] == '=' ? 0.3 : 0);
        band[t] += hopper(70e3 + 4e3 * (size_t(s / 0.04) * 7 % 11), 0.4);
    }
    return band;
}

int main(int argc, char** argv) {
    if (argc != 2) fail("name a folder to write to");
    plot_folder plot(argv[1]);
    const std::vector<sample> band = receive();
    std::vector<sample> pieces(size_t(points) * lines);
    for (int l = 0; l < lines; ++l)
        for (int j = 0; j < points; ++j)  // Hann's window
            pieces[size_t(l) * points + j] = band[size_t(l) * hop + j] * float(0.5 - 0.5 * std::cos(turn * j / points));

    const qfftf::batch all = {.count = lines};
    const auto spectra = qfftf::plan_c2c({points}, pieces, pieces, qfftf::forward, all);  // in place
    spectra();

    std::vector<float> decibels(pieces.size()), mean(points);
    for (int l = 0; l < lines; ++l)
        for (int k = 0; k < points; ++k) {  // frequency 0 goes to the middle
            const float power = std::norm(pieces[size_t(l) * points + (k + points / 2) % points]);
            decibels[size_t(l) * points + k] = 10 * std::log10(power / (2 * points * 3.0f / 8));  // 0 is the noise
            mean[k] += power / lines;
        }
    const auto morse = std::max_element(mean.begin() + points * 5 / 8, mean.begin() + points * 3 / 4) - mean.begin();
    const double hertz = double(morse - points / 2) * rate / points;
    std::printf("%d spectra of %d points; Morse code found at %.1f kHz\n", lines, points, hertz / 1000);
    if (std::abs(hertz - 45e3) > double(rate) / points) fail("where nobody sends");

    plot.array("decibels", decibels);
    plot.value("points", points);
    plot.value("lines", lines);
    plot.value("kilohertz", 0.001 * rate / points);
    plot.value("seconds", double(hop) / rate);
}
