// SPDX-License-Identifier: Apache-2.0
// Indented lines of generated source.
#pragma once
#include <memory>
#include <sstream>
#include <string>
#include <vector>

namespace generator {

struct body;
using bodies = std::vector<std::shared_ptr<const body>>;

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

    // The graphs that lines were printed from, in the order of the lines.
    void printed(std::shared_ptr<const body> b) { printed_.push_back(std::move(b)); }
    const bodies& printed_bodies() const { return printed_; }

private:
    std::string out_;
    bodies printed_;
    int depth_ = 0;
};

// Writes a file unless it has this text already, so that what depends on it isn't built again.
void write_if_changed(const std::string& path, const std::string& content);

}  // namespace generator
