// SPDX-License-Identifier: Apache-2.0
#include "picture.h"

#include <png.h>

#include <algorithm>
#include <cmath>

namespace {

constexpr int glyph_rows = 7, glyph_columns = 5;
constexpr int cell = 2;  // pixels from one dot of a glyph to the next
constexpr int advance = (glyph_columns + 1) * cell + 1;

struct letter_shape {
    char letter;
    const char* rows[glyph_rows];
};

// clang-format off
constexpr letter_shape shapes[] = {
    {'0', {" ### ", "#   #", "#   #", "#   #", "#   #", "#   #", " ### "}},
    {'1', {"  #  ", " ##  ", "  #  ", "  #  ", "  #  ", "  #  ", " ### "}},
    {'2', {" ### ", "#   #", "    #", "   # ", "  #  ", " #   ", "#####"}},
    {'3', {" ### ", "#   #", "    #", "  ## ", "    #", "#   #", " ### "}},
    {'4', {"   # ", "  ## ", " # # ", "#  # ", "#####", "   # ", "   # "}},
    {'5', {"#####", "#    ", "#### ", "    #", "    #", "#   #", " ### "}},
    {'6', {" ### ", "#    ", "#    ", "#### ", "#   #", "#   #", " ### "}},
    {'7', {"#####", "    #", "   # ", "   # ", "  #  ", "  #  ", "  #  "}},
    {'8', {" ### ", "#   #", "#   #", " ### ", "#   #", "#   #", " ### "}},
    {'9', {" ### ", "#   #", "#   #", " ####", "    #", "    #", " ### "}},
    {'-', {"     ", "     ", "     ", "#### ", "     ", "     ", "     "}},
    {'.', {"     ", "     ", "     ", "     ", "     ", "     ", "  #  "}},
    {'B', {"#### ", "#   #", "#   #", "#### ", "#   #", "#   #", "#### "}},
    {'F', {"#####", "#    ", "#    ", "#### ", "#    ", "#    ", "#    "}},
    {'H', {"#   #", "#   #", "#   #", "#####", "#   #", "#   #", "#   #"}},
    {'a', {"     ", "     ", " ### ", "    #", " ####", "#   #", " ####"}},
    {'b', {"#    ", "#    ", "#### ", "#   #", "#   #", "#   #", "#### "}},
    {'d', {"    #", "    #", " ####", "#   #", "#   #", "#   #", " ####"}},
    {'e', {"     ", "     ", " ### ", "#   #", "#####", "#    ", " ### "}},
    {'g', {"     ", "     ", " ####", "#   #", " ####", "    #", " ### "}},
    {'h', {"#    ", "#    ", "#### ", "#   #", "#   #", "#   #", "#   #"}},
    {'i', {"  #  ", "     ", " ##  ", "  #  ", "  #  ", "  #  ", " ### "}},
    {'k', {"#    ", "#    ", "#  # ", "# #  ", "##   ", "# #  ", "#  # "}},
    {'n', {"     ", "     ", "#### ", "#   #", "#   #", "#   #", "#   #"}},
    {'o', {"     ", "     ", " ### ", "#   #", "#   #", "#   #", " ### "}},
    {'r', {"     ", "     ", "# ## ", "##  #", "#    ", "#    ", "#    "}},
    {'s', {"     ", "     ", " ####", "#    ", " ### ", "    #", "#### "}},
    {'t', {" #   ", " #   ", "#### ", " #   ", " #   ", " #  #", "  ## "}},
    {'u', {"     ", "     ", "#   #", "#   #", "#   #", "#   #", " ####"}},
    {'z', {"     ", "     ", "#####", "   # ", "  #  ", " #   ", "#####"}},
};
// clang-format on

// Distance of a point from the line between two dots, all in dots.
double distance_to_stroke(double x, double y, double x0, double y0, double x1, double y1) {
    const double along = (x1 - x0) * (x1 - x0) + (y1 - y0) * (y1 - y0);
    double t = along == 0 ? 0 : ((x - x0) * (x1 - x0) + (y - y0) * (y1 - y0)) / along;
    t = std::clamp(t, 0.0, 1.0);
    return std::hypot(x - x0 - t * (x1 - x0), y - y0 - t * (y1 - y0));
}

}  // namespace

picture::picture(int width, int height, colour background)
    : width_(width), height_(height), pixels_(static_cast<size_t>(width) * height, background) {}

void picture::box(int x, int y, int width, int height, colour paint) {
    for (int row = std::max(y, 0); row < std::min(y + height, height_); ++row) {
        for (int column = std::max(x, 0); column < std::min(x + width, width_); ++column) {
            at(column, row) = paint;
        }
    }
}

void picture::text(std::string_view line, int x, int y, colour paint) {
    int left = x - (static_cast<int>(line.size()) * advance - cell) / 2;
    for (const char letter : line) {
        glyph(letter, left, y, paint);
        left += advance;
    }
}

// Neighbouring dots are joined by strokes with soft edges: a pixel takes as much paint as the nearest stroke covers.
void picture::glyph(char letter, int left, int top, colour paint) {
    const auto* shape = std::find_if(std::begin(shapes), std::end(shapes), [&](auto& s) { return s.letter == letter; });
    if (shape == std::end(shapes)) {
        return;
    }
    const auto dot = [&](int x, int y) {
        return x >= 0 && x < glyph_columns && y >= 0 && y < glyph_rows && shape->rows[y][x] == '#';
    };
    for (int y = -cell; y < (glyph_rows + 1) * cell; ++y) {
        for (int x = -cell; x < (glyph_columns + 1) * cell; ++x) {
            double nearest = 9;
            for (int row = 0; row < glyph_rows; ++row) {
                for (int column = 0; column < glyph_columns; ++column) {
                    for (const auto [dx, dy] : {std::pair(0, 0), {1, 0}, {0, 1}, {1, 1}, {-1, 1}}) {
                        const bool corner = dx && dy && (dot(column + dx, row) || dot(column, row + dy));
                        if (dot(column, row) && dot(column + dx, row + dy) && !corner) {
                            const double px = static_cast<double>(x) / cell, py = static_cast<double>(y) / cell;
                            nearest = std::min(nearest, distance_to_stroke(px, py, column, row, column + dx, row + dy));
                        }
                    }
                }
            }
            const double cover = std::clamp(1.2 - nearest * cell, 0.0, 1.0);
            if (cover > 0 && left + x >= 0 && left + x < width_ && top + y >= 0 && top + y < height_) {
                colour& c = at(left + x, top + y);
                const auto mix = [&](uint8_t from, uint8_t to) {
                    return uint8_t(std::lround(from + cover * (to - from)));
                };
                c = {mix(c.red, paint.red), mix(c.green, paint.green), mix(c.blue, paint.blue)};
            }
        }
    }
}

std::optional<picture> picture::read_png(const std::string& file) {
    png_image image = {};
    image.version = PNG_IMAGE_VERSION;
    if (!png_image_begin_read_from_file(&image, file.c_str())) {
        return std::nullopt;
    }
    image.format = PNG_FORMAT_RGB;
    picture result(static_cast<int>(image.width), static_cast<int>(image.height), {});
    const png_color black = {};
    if (!png_image_finish_read(&image, &black, result.pixels_.data(), 0, nullptr)) {
        return std::nullopt;
    }
    return result;
}

bool picture::write_png(const std::string& file) const {
    png_image image = {};
    image.version = PNG_IMAGE_VERSION;
    image.width = static_cast<png_uint_32>(width_);
    image.height = static_cast<png_uint_32>(height_);
    image.format = PNG_FORMAT_RGB;
    return png_image_write_to_file(&image, file.c_str(), 0, pixels_.data(), 0, nullptr) != 0;
}
