// SPDX-License-Identifier: Apache-2.0
// What the gallery's programs read and write: sounds, pictures, and arrays for gnuplot.
#pragma once
#include <fstream>
#include <span>
#include <string>
#include <vector>

[[noreturn]] void fail(const std::string& reason);

struct sound {
    std::vector<float> samples;  // channels mixed to one
    int rate = 0;
};
sound read_sound(const std::string& file);
void write_sound(const std::string& file, const sound& s);

// Rows of grey values, or of one colour after the other, from 0 to 255.
struct image {
    int width = 0, height = 0, channels = 1;
    std::vector<float> values;
    float& at(int x, int y, int channel = 0) { return values[(size_t(y) * width + x) * channels + channel]; }
    float at(int x, int y, int channel = 0) const { return values[(size_t(y) * width + x) * channels + channel]; }
};
image read_png(const std::string& file, int channels);
double psnr(const image& a, const image& b);  // peak signal to noise ratio in decibels

// A folder that a script of gnuplot reads: arrays in binary, and "values.gp" with numbers and texts by name.
class plot_folder {
public:
    explicit plot_folder(std::string folder);
    void array(const std::string& name, std::span<const float> values);
    void picture(const std::string& name, const image& i);  // cut to 0 ... 255, with its width and height as values
    void value(const std::string& name, double number);
    void text(const std::string& name, const std::string& words);
    std::string file(const std::string& name) const { return folder_ + "/" + name; }

private:
    std::string folder_;
    std::ofstream values_;
};
