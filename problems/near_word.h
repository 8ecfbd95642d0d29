// SPDX-License-Identifier: Apache-2.0
// A hint for a word that isn't known but nearly is.
#pragma once
#include <algorithm>
#include <cctype>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace problems {

// The number of letters to insert, drop, replace or exchange with their neighbour; capitals count as small letters.
inline size_t word_distance(std::string_view a, std::string_view b) {
    const auto same = [](char x, char y) { return std::tolower(x & 0xff) == std::tolower(y & 0xff); };
    std::vector<std::vector<size_t>> steps(a.size() + 1, std::vector<size_t>(b.size() + 1));
    for (size_t i = 0; i <= a.size(); ++i)
        for (size_t j = 0; j <= b.size(); ++j) {
            if (i == 0 || j == 0) {
                steps[i][j] = i + j;
                continue;
            }
            const size_t replaced = steps[i - 1][j - 1] + (same(a[i - 1], b[j - 1]) ? 0 : 1);
            steps[i][j] = std::min({replaced, steps[i - 1][j] + 1, steps[i][j - 1] + 1});
            if (i > 1 && j > 1 && same(a[i - 1], b[j - 2]) && same(a[i - 2], b[j - 1]))
                steps[i][j] = std::min(steps[i][j], steps[i - 2][j - 2] + 1);
        }
    return steps[a.size()][b.size()];
}

// ": did you mean c2c?" for the nearest of the words if it is near, else empty.
inline std::string did_you_mean(std::string_view word, std::span<const std::string_view> words) {
    const auto nearer = [&](std::string_view a, std::string_view b) {
        return word_distance(word, a) < word_distance(word, b);
    };
    const std::string_view nearest = *std::min_element(words.begin(), words.end(), nearer);
    if (word_distance(word, nearest) > (word.size() < 5 ? 1 : 2)) return "";
    return ": did you mean " + std::string(nearest) + "?";
}

}  // namespace problems
