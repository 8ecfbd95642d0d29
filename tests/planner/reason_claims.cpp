// SPDX-License-Identifier: Apache-2.0
#include "tests/planner/reason_claims.h"

#include <regex>
#include <stdexcept>

namespace {

// Sums and products, in 32 bits as the documented tests count; a name alone keeps its 64 bits.
class expression {
public:
    expression(const std::string& text, const call_numbers& numbers) : rest_(text), numbers_(numbers) {}
    int64_t value() {
        const int64_t v = product();
        if (!rest_.empty()) throw std::runtime_error("can't read '" + rest_ + "'");
        return v;
    }

private:
    bool take(const std::string& token) {
        if (!rest_.starts_with(token)) return false;
        rest_.erase(0, token.size());
        return true;
    }
    int64_t product() {
        int64_t v = factor();
        for (;;) {
            if (take(" * "))
                v = static_cast<int32_t>(static_cast<uint32_t>(v) * static_cast<uint32_t>(factor()));
            else if (take(" / 2 + 1"))
                v = v / 2 + 1;
            else
                return v;
        }
    }
    int64_t factor() {
        if (take("(")) {
            const int64_t v = factor() - 1;
            if (!take(" - 1)")) throw std::runtime_error("can't read '" + rest_ + "'");
            return v;
        }
        const size_t end = rest_.find_first_of(" )");
        const std::string name = rest_.substr(0, end);
        rest_.erase(0, name.size());
        const auto found = numbers_.find(name);
        if (found == numbers_.end()) throw std::runtime_error("'" + name + "' is no number of the call");
        return found->second;
    }

    std::string rest_;
    const call_numbers& numbers_;
};

bool holds(int64_t left, const std::string& relation, int64_t right) {
    if (relation == "is below") return left < right;
    if (relation == "is above") return left > right;
    if (relation == "is not below") return left >= right;
    if (relation == "is not above") return left <= right;
    return left != right;
}

}  // namespace

std::string false_claim(const std::string& reason, const call_numbers& numbers) {
    const std::string term =
        R"(((?:\([a-z_.0-9\[\]]+ - 1\)|[a-z_]+[a-z_.0-9\[\]]*)(?: \* [a-z_.0-9\[\]]+)?(?: / 2 \+ 1)?) = )"
        R"((-?[0-9]+))";
    const std::regex equation(term);
    int claims = 0;
    try {
        for (std::sregex_iterator it(reason.begin(), reason.end(), equation), end; it != end; ++it, ++claims) {
            const int64_t value = expression((*it)[1], numbers).value();
            if (std::to_string(value) != (*it)[2]) return (*it)[0].str() + ", but it is " + std::to_string(value);
        }
        const std::regex comparison(
            "= (-?[0-9]+)(?: \\([a-z0-9]+\\))? (is(?: not)?(?: below| above)?) (?:[a-z(][^=]* = )?(-?[0-9]+)");
        for (std::sregex_iterator it(reason.begin(), reason.end(), comparison), end; it != end; ++it, ++claims)
            if (!holds(std::stoll((*it)[1]), (*it)[2], std::stoll((*it)[3]))) return (*it)[0].str() + " isn't so";
    } catch (const std::exception& e) {
        return e.what();
    }
    return claims ? "" : "no claim with a number";
}
