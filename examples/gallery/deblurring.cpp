// SPDX-License-Identifier: Apache-2.0
// deblurring FOLDER PHOTOGRAPH.png
// A photograph that was moved while it was taken, and has noise: the blur is a product in the spectrum, and Wiener's
// filter divides by it where there is more signal than noise (Wiener 1949).
#include <algorithm>
#include <cmath>
#include <complex>
#include <cstdio>
#include <qfftf.hpp>
#include <random>

#include "files.h"

int main(int argc, char** argv) {
    if (argc != 3) fail("name a folder to write to and a photograph, PNG");
    plot_folder plot(argv[1]);
    const image sharp = read_png(argv[2], 1);
    const int rows = sharp.height, columns = sharp.width, half = columns / 2 + 1;

    std::vector<float> blur(sharp.values.size()), array = sharp.values;
    constexpr int length = 17;
    for (int j = 0; j < length; ++j) blur[size_t(j / 3) * columns + j] = 1.0f / length;  // where the camera was

    std::vector<std::complex<float>> spectrum(size_t(rows) * half), response(spectrum.size());
    const auto forward = qfftf::plan_r2c({rows, columns}, array, spectrum);
    const auto backward = qfftf::plan_c2r({rows, columns}, spectrum, array);
    const float scale = 1.0f / float(rows * columns);

    forward(blur, response);
    forward();
    for (size_t k = 0; k < spectrum.size(); ++k) spectrum[k] *= response[k] * scale;
    backward();
    std::mt19937 engine(1);
    std::normal_distribution<float> noise(0, 1.5f);
    for (float& pixel : array) pixel = std::round(std::clamp(pixel + noise(engine), 0.0f, 255.0f));
    const image moved = {columns, rows, 1, array};

    forward();
    for (int r = 0; r < rows; ++r)
        for (int c = 0; c < half; ++c) {
            const double down = std::min(r, rows - r) / double(rows), across = c / double(columns);
            const auto noise_to_signal =
                float(0.3 * (down * down + across * across));  // pictures have little at high frequencies
            const size_t k = size_t(r) * half + c;
            spectrum[k] *= std::conj(response[k]) * (scale / (std::norm(response[k]) + noise_to_signal));
        }
    backward();
    const image restored = {columns, rows, 1, array};

    std::printf("moved: %.1f dB, restored: %.1f dB\n", psnr(sharp, moved), psnr(sharp, restored));
    if (!(psnr(sharp, restored) > psnr(sharp, moved) + 6)) fail("which is too little");
    plot.picture("moved", moved);
    plot.picture("restored", restored);
    plot.value("moved_db", psnr(sharp, moved));
    plot.value("restored_db", psnr(sharp, restored));
}
