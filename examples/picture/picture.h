// SPDX-License-Identifier: Apache-2.0
// A picture in memory for the examples that show something: pixels, boxes, small text, PNG files through libpng.
#pragma once
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

struct colour {
    uint8_t red, green, blue;
};

class picture {
public:
    picture(int width, int height, colour background);
    static std::optional<picture> read_png(const std::string& file);

    int width() const { return width_; }
    int height() const { return height_; }
    colour& at(int x, int y) { return pixels_[static_cast<size_t>(y) * width_ + x]; }
    const colour& at(int x, int y) const { return pixels_[static_cast<size_t>(y) * width_ + x]; }

    void box(int x, int y, int width, int height, colour paint);

    // Digits, '.', '-' and the letters that the examples need, centred on x, with their top at y.
    void text(std::string_view line, int x, int y, colour paint);
    static constexpr int text_height = 14;

    bool write_png(const std::string& file) const;

private:
    void glyph(char letter, int left, int top, colour paint);

    int width_, height_;
    std::vector<colour> pixels_;
};
