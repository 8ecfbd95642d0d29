// SPDX-License-Identifier: Apache-2.0
#include "draw.h"

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <string>

namespace {

constexpr int plot_left = 64, plot_top = 36, plot_width = 1120, plot_height = 512;
constexpr int bar_left = plot_left + plot_width + 24, bar_width = 16;
constexpr int picture_width = bar_left + bar_width + 64, picture_height = plot_top + plot_height + 44;
constexpr int tick = 6;
constexpr double silence_db = -90;  // and everything below it is black
constexpr colour ink = {40, 40, 40}, paper = {255, 255, 255};

// From black over violet, red and orange to light yellow, for shares from 0 to 1 of the way to the loudest.
colour heat(double share) {
    constexpr colour steps[] = {{0, 0, 4},     {31, 12, 72},   {85, 15, 109},  {136, 34, 106}, {186, 54, 85},
                                {227, 89, 51}, {249, 140, 10}, {249, 201, 50}, {252, 255, 164}};
    constexpr int last = std::size(steps) - 1;
    const double place = std::clamp(share, 0.0, 1.0) * last;
    const int below = std::min(static_cast<int>(place), last - 1);
    const auto mix = [&](uint8_t from, uint8_t to) {
        return static_cast<uint8_t>(std::lround(from + (place - below) * (to - from)));
    };
    const colour a = steps[below], b = steps[below + 1];
    return {mix(a.red, b.red), mix(a.green, b.green), mix(a.blue, b.blue)};
}

// A distance between ticks, 1, 2 or 5 times a power of ten, that gives at most `most` of them.
double tick_distance(double range, int most) {
    double distance = std::pow(10, std::floor(std::log10(range / most)));
    for (const double factor : {2.0, 2.5, 2.0}) {
        if (range / distance > most) {
            distance *= factor;
        }
    }
    return distance;
}

std::string label(double value, const char* unit = "") {
    char text[32];
    std::snprintf(text, sizeof text, "%.4g%s", value, unit);
    return text;
}

void draw_time_scale(picture& canvas, double seconds) {
    const double distance = tick_distance(seconds, 13);
    const int bottom = plot_top + plot_height;
    for (int i = 0; i * distance <= seconds; ++i) {
        const int x = plot_left + static_cast<int>(i * distance / seconds * (plot_width - 1));
        canvas.box(x, bottom, 1, tick, ink);
        canvas.text(label(i * distance, i == 0 ? " s" : ""), x, bottom + tick + 6, ink);
    }
}

void draw_frequency_scale(picture& canvas, double highest) {
    const double distance = tick_distance(highest / 1000, 12);
    for (int i = 0; i * distance <= highest / 1000; ++i) {
        const int y = plot_top + plot_height - 1 - static_cast<int>(i * distance * 1000 / highest * (plot_height - 1));
        canvas.box(plot_left - tick, y, tick, 1, ink);
        canvas.text(label(i * distance), plot_left - tick - 20, y - picture::text_height / 2, ink);
    }
    canvas.text("kHz", plot_left - tick - 20, plot_top - 30, ink);
}

void draw_colour_bar(picture& canvas) {
    for (int row = 0; row < plot_height; ++row) {
        canvas.box(bar_left, plot_top + row, bar_width, 1, heat(1 - row / (plot_height - 1.0)));
    }
    for (double db = 0; db >= silence_db; db -= 10) {
        const int y = plot_top + static_cast<int>(db / silence_db * (plot_height - 1));
        canvas.box(bar_left + bar_width, y, tick, 1, ink);
        canvas.text(label(db), bar_left + bar_width + tick + 22, y - picture::text_height / 2, ink);
    }
    canvas.text("dB", bar_left + bar_width + tick + 22, plot_top - 30, ink);
}

// The mean power of the pieces from `first` up to, not including, `last`, bin by bin.
std::vector<double> mean_power(const spectrum_over_time& spectrum, size_t first, size_t last) {
    std::vector<double> mean(spectrum[first].size());
    for (size_t piece = first; piece < last; ++piece) {
        for (size_t bin = 0; bin < mean.size(); ++bin) {
            mean[bin] += spectrum[piece][bin] / static_cast<double>(last - first);
        }
    }
    return mean;
}

}  // namespace

picture draw(const spectrum_over_time& spectrum, double seconds_per_piece, double sampling_rate) {
    picture canvas(picture_width, picture_height, paper);
    const size_t pieces = spectrum.size(),
                 bins = spectrum.front().size() - 1;  // the last one is the upper edge
    double loudest = 0;
    for (const auto& power : spectrum) {
        loudest = std::max(loudest, *std::max_element(power.begin(), power.end()));
    }
    for (int x = 0; x < plot_width; ++x) {
        const size_t first = x * pieces / plot_width;
        const auto power = mean_power(spectrum, first, std::max(first + 1, (x + 1) * pieces / plot_width));
        for (int y = 0; y < plot_height; ++y) {
            const size_t bin = (plot_height - 1 - y) * bins / plot_height;
            const double db = 10 * std::log10(std::max(power[bin] / loudest, 1e-30));
            canvas.at(plot_left + x, plot_top + y) = heat(1 - db / silence_db);
        }
    }
    draw_time_scale(canvas, static_cast<double>(pieces) * seconds_per_piece);
    draw_frequency_scale(canvas, sampling_rate / 2);
    draw_colour_bar(canvas);
    return canvas;
}
