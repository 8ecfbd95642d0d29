// SPDX-License-Identifier: Apache-2.0
// upsampling FOLDER PHOTOGRAPH.png
// Enlarges a photograph to four times its width and height by the Fourier method, one transform per colour, and shows a
// part of it beside what repeating every pixel gives.
#include <qfftf.h>
#include <algorithm>
#include <cmath>
#include <cstdio>

#include "files.h"

constexpr int factor = 4, shown = 100;  // pixels of the photograph, in both directions

// Pixel j of the photograph becomes the `factor` pixels from factor * j on, and its centre lies in their middle. So the
// pixel that begins such a group is taken from a place in front of that centre, by less than a pixel of the photograph.
constexpr float shift = -(factor - 1) / 2.0F;

int main(int argc, char** argv) {
    if (argc != 3) fail("name a folder to write to and a photograph, PNG");
    plot_folder plot(argv[1]);
    const image photograph = read_png(argv[2], 3);
    const int rows = photograph.height, columns = photograph.width;
    image enlarged = {factor * columns, factor * rows, 3,
                      std::vector<float>(photograph.values.size() * factor * factor)};
    for (int colour = 0; colour < 3; ++colour) {
        std::vector<float> in(size_t(rows) * columns), out(in.size() * factor * factor);
        for (size_t k = 0; k < in.size(); ++k) in[k] = photograph.values[3 * k + colour];
        qsl_fftf_plan plan = qsl_fftf_plan_upsampling_2d(rows, columns, factor * rows, factor * columns, in.data(),
                                                         out.data(), QSL_FFTF_RULES, shift, shift);
        if (!plan) fail("there is no plan for this picture");
        qsl_fftf_execute(plan);  // the plan is for this one execution
        qsl_fftf_destroy_plan(plan);
        for (size_t k = 0; k < out.size(); ++k) enlarged.values[3 * k + colour] = out[k] * factor * factor;
    }
    double before = 0, after = 0;  // the mean of a picture is its lowest frequency
    for (const float v : photograph.values) before += v / double(photograph.values.size());
    for (const float v : enlarged.values) after += v / double(enlarged.values.size());
    std::printf("%d x %d pixels become %d x %d; mean %.3f, was %.3f\n", columns, rows, enlarged.width, enlarged.height,
                after, before);
    if (!(std::abs(after - before) < 1e-3)) fail("which should be the same");

    const int width = factor * std::min(shown, columns), height = factor * std::min(shown, rows);
    const int left = (enlarged.width - width) * 2 / 5 / factor * factor,
              top = (enlarged.height - height) * 2 / 5 / factor * factor;
    image a = {width, height, 3, {}}, b = a;
    for (int y = top; y < top + height; ++y)
        for (int x = left; x < left + width; ++x)
            for (int colour = 0; colour < 3; ++colour) {
                a.values.push_back(photograph.at(x / factor, y / factor, colour));
                b.values.push_back(enlarged.at(x, y, colour));
            }
    plot.picture("repeated", a);
    plot.picture("enlarged", b);
}
