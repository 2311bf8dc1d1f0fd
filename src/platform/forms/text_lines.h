#pragma once

#include "platform/forms/line_source.h"

#include <string>
#include <utility>
#include <vector>

namespace bitlux::forms {

/// Lines that are stored as text. After a change the caller must notify the lists that show them
/// (ListBox::linesChanged).
class TextLines : public LineSource {
public:
    [[nodiscard]] std::size_t size() const override { return lines_.size(); }
    [[nodiscard]] std::string line(std::size_t index) const override { return lines_[index]; }

    void add(std::string line) { lines_.push_back(std::move(line)); }
    void clear() { lines_.clear(); }
    void assign(std::vector<std::string> lines) { lines_ = std::move(lines); }
    [[nodiscard]] const std::vector<std::string>& all() const { return lines_; }

    /// In front of line `index`, or at the end when that is size().
    void insert(std::size_t index, std::string line) {
        lines_.insert(lines_.begin() + static_cast<std::ptrdiff_t>(index), std::move(line));
    }

    // Indexes are below size().
    void replace(std::size_t index, std::string line) { lines_[index] = std::move(line); }
    void remove(std::size_t first, std::size_t count) {
        const auto begin = lines_.begin() + static_cast<std::ptrdiff_t>(first);
        lines_.erase(begin, begin + static_cast<std::ptrdiff_t>(count));
    }
    void remove(std::size_t index) {
        lines_.erase(lines_.begin() + static_cast<std::ptrdiff_t>(index));
    }
    void swap(std::size_t one, std::size_t other) { std::swap(lines_[one], lines_[other]); }
    /// Removes every line of this text.
    void removeAll(const std::string& text) { std::erase(lines_, text); }

private:
    std::vector<std::string> lines_;
};

} // namespace bitlux::forms
