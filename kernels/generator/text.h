// SPDX-License-Identifier: Apache-2.0
// Indented lines of generated source.
#pragma once
#include <sstream>
#include <string>

namespace generator {

class text {
public:
    template <class... Parts>
    void line(const Parts&... parts) {
        std::ostringstream s;
        (s << ... << parts);
        if (s.str().starts_with("}")) --depth_;
        out_ += std::string(4 * depth_, ' ') + s.str() + "\n";
        if (s.str().ends_with("{")) ++depth_;
    }
    void blank() { out_ += "\n"; }
    void append(const std::string& lines) { out_ += lines; }
    const std::string& str() const { return out_; }

private:
    std::string out_;
    int depth_ = 0;
};

// Writes a file unless it has this text already, so that what depends on it isn't built again.
void write_if_changed(const std::string& path, const std::string& content);

}  // namespace generator
