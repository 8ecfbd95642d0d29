// SPDX-License-Identifier: Apache-2.0
#include "files.h"

#include <png.h>
#include <sndfile.h>

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <cstdlib>

void fail(const std::string& reason) {
    std::fprintf(stderr, "%s\n", reason.c_str());
    std::exit(1);
}

sound read_sound(const std::string& file) {
    SF_INFO info = {};
    SNDFILE* handle = sf_open(file.c_str(), SFM_READ, &info);
    if (!handle) fail(file + ": " + sf_strerror(nullptr));
    std::vector<float> frames(size_t(info.frames) * info.channels);
    sf_readf_float(handle, frames.data(), info.frames);
    sf_close(handle);
    sound s = {std::vector<float>(info.frames), info.samplerate};
    for (size_t k = 0; k < frames.size(); ++k) s.samples[k / info.channels] += frames[k] / float(info.channels);
    return s;
}

void write_sound(const std::string& file, const sound& s) {
    SF_INFO info = {};
    info.samplerate = s.rate;
    info.channels = 1;
    info.format = SF_FORMAT_WAV | SF_FORMAT_PCM_16;
    SNDFILE* handle = sf_open(file.c_str(), SFM_WRITE, &info);
    if (!handle) fail("cannot write " + file);
    sf_writef_float(handle, s.samples.data(), sf_count_t(s.samples.size()));
    sf_close(handle);
}

image read_png(const std::string& file, int channels) {
    png_image png = {};
    png.version = PNG_IMAGE_VERSION;
    if (!png_image_begin_read_from_file(&png, file.c_str())) fail("cannot read " + file);
    png.format = channels == 1 ? PNG_FORMAT_GRAY : PNG_FORMAT_RGB;
    std::vector<unsigned char> pixels(PNG_IMAGE_SIZE(png));
    const png_color black = {};
    if (!png_image_finish_read(&png, &black, pixels.data(), 0, nullptr)) fail("cannot read " + file);
    return {int(png.width), int(png.height), channels, std::vector<float>(pixels.begin(), pixels.end())};
}

double psnr(const image& a, const image& b) {
    double squares = 0;
    for (size_t k = 0; k < a.values.size(); ++k) squares += std::pow(double(a.values[k]) - b.values[k], 2);
    return 10 * std::log10(255.0 * 255.0 * double(a.values.size()) / squares);
}

plot_folder::plot_folder(std::string folder) : folder_(std::move(folder)), values_(file("values.gp")) {
    if (!values_) fail("cannot write into " + folder_);
}

void plot_folder::array(const std::string& name, std::span<const float> values) {
    std::ofstream(file(name), std::ios::binary)
        .write(reinterpret_cast<const char*>(values.data()), std::streamsize(values.size_bytes()));
}

void plot_folder::picture(const std::string& name, const image& i) {
    std::vector<unsigned char> pixels;
    for (const float v : i.values) {
        const auto level = static_cast<unsigned char>(std::clamp(v, 0.0f, 255.0f) + 0.5f);
        pixels.insert(pixels.end(), i.channels == 1 ? 3 : 1, level);  // grey is red, green and blue alike
    }
    std::ofstream(file(name), std::ios::binary)
        .write(reinterpret_cast<const char*>(pixels.data()), std::streamsize(pixels.size()));
    value(name + "_width", i.width);
    value(name + "_height", i.height);
}

void plot_folder::value(const std::string& name, double number) { values_ << name << " = " << number << "\n"; }

void plot_folder::text(const std::string& name, const std::string& words) {
    values_ << name << " = '" << words << "'\n";
}
