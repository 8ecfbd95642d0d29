// SPDX-License-Identifier: Apache-2.0
// image_coder FOLDER PHOTOGRAPH.png
// What image formats do: cosine transforms of blocks of 8 x 8 pixels (Ahmed, Natarajan and Rao 1974), coefficients
// rounded to multiples of a step that grows with frequency, and back. One plan transforms all blocks where they lie.
#include <qfftf.h>
#include <cmath>
#include <cstdio>
#include <map>
#include <string>

#include "files.h"

constexpr int block = 8;

// All blocks in place: two dimensions inside a block, two of blocks.
qsl_fftf_plan plan_blocks(image& i, qsl_fftf_r2r_kind kind) {
    const fft_iodim inside[2] = {{block, i.width, i.width}, {block, 1, 1}};
    const fft_iodim blocks[2] = {{i.height / block, block * i.width, block * i.width}, {i.width / block, block, block}};
    const qsl_fftf_r2r_kind kinds[2] = {kind, kind};
    qsl_fftf_plan plan =
        qsl_fftf_plan_guru_r2r(2, inside, 2, blocks, i.values.data(), i.values.data(), kinds, QSL_FFTF_RULES);
    if (!plan) fail("there is no plan for this picture");
    return plan;
}

// Codes and decodes; returns the bits per pixel that an ideal entropy coder would need for the rounded coefficients.
double code(image& i, double coarseness) {
    qsl_fftf_plan cosine = plan_blocks(i, QSL_FFTF_REDFT10), inverse = plan_blocks(i, QSL_FFTF_REDFT01);
    for (float& v : i.values) v -= 128;
    qsl_fftf_execute(cosine);
    std::map<int, double> histogram;
    for (int y = 0; y < i.height; ++y)
        for (int x = 0; x < i.width; ++x) {
            const float step = float(coarseness * (8 + 3 * (x % block + y % block)) * 2 * block);
            const int level = int(std::lround(i.at(x, y) / step));
            histogram[level] += 1.0 / double(i.values.size());
            i.at(x, y) = float(level) * step;
        }
    qsl_fftf_execute(inverse);
    for (float& v : i.values) v = std::round(v / (4 * block * block)) + 128;
    qsl_fftf_destroy_plan(cosine);
    qsl_fftf_destroy_plan(inverse);
    double bits = 0;
    for (const auto& [level, share] : histogram) bits -= share * std::log2(share);
    return bits;
}

int main(int argc, char** argv) {
    if (argc != 3) fail("name a folder to write to and a photograph, PNG");
    plot_folder plot(argv[1]);
    const image whole = read_png(argv[2], 1);
    image photograph = {whole.width / block * block, whole.height / block * block, 1, {}};
    for (int y = 0; y < photograph.height; ++y)
        for (int x = 0; x < photograph.width; ++x) photograph.values.push_back(whole.at(x, y));

    image exact = photograph;
    code(exact, 1e-4);
    const double loss = psnr(photograph, exact);
    plot.picture("original", photograph);
    int number = 0;
    for (const double coarseness : {0.5, 1.5, 5.0}) {
        image coded = photograph;
        const double bits = code(coded, coarseness), quality = psnr(photograph, coded);
        const std::string name = "coded" + std::to_string(++number);
        plot.picture(name, coded);
        plot.value(name + "_bits", bits);
        plot.value(name + "_db", quality);
        std::printf("%.2f bits per pixel: %.1f dB\n", bits, quality);
    }
    if (!(loss > 90)) fail("without rounding the way there and back should change nothing");
}
