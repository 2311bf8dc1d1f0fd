#pragma once

#include "platform/forms/line_source.h"

#include <string>
#include <utility>
#include <vector>

namespace bitlux::forms {

/// Lines that are kept as text. Whoever changes them tells the lists that show them
/// (ListBox::linesChanged).
class TextLines : public LineSource {
public:
    [[nodiscard]] std::size_t size() const override { return lines_.size(); }
    [[nodiscard]] std::string line(std::size_t index) const override { return lines_[index]; }

    void add(std::string line) { lines_.push_back(std::move(line)); }
    void clear() { lines_.clear(); }

private:
    std::vector<std::string> lines_;
};

} // namespace bitlux::forms
