#pragma once

#include "platform/failure.h"

#include <memory>
#include <string>
#include <utility>
#include <vector>

#include <fmt/format.h>

namespace bitlux::forms {

class Form;

/// Controls of one kind that share a name and a handler and differ by their index.
template <typename T>
class ControlArray {
public:
    /// Elements `first` to `last`; `make(index)` makes one, with its index.
    template <typename Make>
    ControlArray(std::string name, int first, int last, Make make)
        : name_(std::move(name)), first_(first) {
        elements_.reserve(static_cast<std::size_t>(last - first) + 1);
        for (int index = first; index <= last; ++index)
            elements_.push_back(make(name_, index));
    }

    /// Elements 0 to `count` - 1 that all have the same caption.
    ControlArray(Form& form, std::string name, int count, const std::string& caption = {})
        : ControlArray(std::move(name), 0, count - 1,
                       [&form, &caption](const std::string& arrayName, int index) {
                           return std::make_unique<T>(form, arrayName, caption, index);
                       }) {}

    /// Raises Failure (OutOfRange) outside the array.
    T& operator()(int index) const {
        if (index < first_ || index > last())
            throw Failure(Failure::Kind::OutOfRange,
                          fmt::format("There is no {}({})", name_, index));
        return *elements_[static_cast<std::size_t>(index - first_)];
    }

    [[nodiscard]] int first() const { return first_; }
    [[nodiscard]] int last() const { return first_ + static_cast<int>(elements_.size()) - 1; }

    // The elements themselves, for loops over all of them.
    auto begin() const { return elements_.begin(); }
    auto end() const { return elements_.end(); }

private:
    std::string name_;
    int first_;
    std::vector<std::unique_ptr<T>> elements_;
};

} // namespace bitlux::forms
