// SPDX-License-Identifier: Apache-2.0
// upsampling RESULT.png PHOTOGRAPH.png
// Enlarges a photograph to four times its width and height by the Fourier method, one transform per colour, and shows
// a part of it beside what repeating every pixel gives.
#include <qfftf.h>

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <string>
#include <vector>

#include "picture.h"

namespace {

constexpr int factor = 4;
constexpr int shown = 80;  // pixels of the photograph, in both directions
constexpr int zoom = 2;    // of the result, to see more of it
constexpr int gap = 12, heading = 34;
constexpr colour ink = {40, 40, 40}, paper = {255, 255, 255};

// Pixel j of the photograph becomes the `factor` pixels from factor * j on, and its centre lies in their middle. So the
// pixel that begins such a group is taken from a place in front of that centre, by less than a pixel of the photograph.
constexpr float shift = -(factor - 1) / 2.0F;

[[noreturn]] void fail(const std::string& reason) {
    std::fprintf(stderr, "upsampling: %s\n", reason.c_str());
    std::exit(1);
}

// One colour, enlarged. The plan is for this one execution.
std::vector<float> enlarge(const picture& photograph, uint8_t colour::* channel) {
    const int rows = photograph.height(), columns = photograph.width();
    std::vector<float> in(static_cast<size_t>(rows) * columns), out(in.size() * factor * factor);
    qsl_fftf_plan plan = qsl_fftf_plan_upsampling_2d(rows, columns, factor * rows, factor * columns, in.data(),
                                                     out.data(), QSL_FFTF_RULES, shift, shift);
    if (!plan) {
        fail("there is no plan for this picture");
    }
    for (size_t i = 0; i < in.size(); ++i) {
        in[i] = photograph.at(static_cast<int>(i % columns), static_cast<int>(i / columns)).*channel;
    }
    qsl_fftf_execute(plan);
    qsl_fftf_destroy_plan(plan);
    for (float& value : out) {
        value *= factor * factor;  // the transform scales by the number of pixels before to that after
    }
    return out;
}

picture enlarge(const picture& photograph) {
    picture result(factor * photograph.width(), factor * photograph.height(), paper);
    for (uint8_t colour::* channel : {&colour::red, &colour::green, &colour::blue}) {
        const std::vector<float> values = enlarge(photograph, channel);
        for (size_t i = 0; i < values.size(); ++i) {
            const float value = std::clamp(values[i], 0.0F, 255.0F);
            result.at(static_cast<int>(i % result.width()), static_cast<int>(i / result.width())).*channel =
                static_cast<uint8_t>(std::lround(value));
        }
    }
    return result;
}

// A part of both, side by side, every pixel of the result as a square.
picture compare(const picture& photograph, const picture& enlarged) {
    const int width = std::min(shown, photograph.width()), height = std::min(shown, photograph.height());
    const int left = (photograph.width() - width) * 2 / 5, top = (photograph.height() - height) * 2 / 5;
    const int side = factor * zoom;  // what a pixel of the photograph becomes
    picture both(2 * side * width + 3 * gap, side * height + heading + gap, paper);
    for (int y = 0; y < side * height; ++y) {
        for (int x = 0; x < side * width; ++x) {
            both.at(gap + x, heading + y) = photograph.at(left + x / side, top + y / side);
            both.at(2 * gap + side * width + x, heading + y) =
                enlarged.at(factor * left + x / zoom, factor * top + y / zoom);
        }
    }
    both.text("nearest neighbour", gap + side * width / 2, 10, ink);
    both.text("Fourier", 2 * gap + side * width * 3 / 2, 10, ink);
    return both;
}

}  // namespace

int main(int argument_count, char** arguments) {
    if (argument_count != 3) {
        fail("name a picture to write and a photograph to read, both PNG");
    }
    const auto photograph = picture::read_png(arguments[2]);
    if (!photograph) {
        fail(std::string("cannot read ") + arguments[2]);
    }
    std::printf("read     %d x %d pixels\n", photograph->width(), photograph->height());
    const picture enlarged = enlarge(*photograph);
    std::printf("enlarged %d x %d pixels, taken %g further on\n", enlarged.width(), enlarged.height(), shift);
    if (!compare(*photograph, enlarged).write_png(arguments[1])) {
        fail(std::string("cannot write ") + arguments[1]);
    }
    std::printf("wrote    %s\n", arguments[1]);
}
