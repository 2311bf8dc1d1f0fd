#pragma once

#include <cstddef>
#include <string>
#include <utility>
#include <vector>

namespace bitlux {

/// The Batches, counted from 1: named lists of commands to send.
class BatchLists {
public:
    /// Line 0 is the name and is always there; the commands follow.
    using Lines = std::vector<std::string>;

    [[nodiscard]] int count() const { return static_cast<int>(lists_.size()); }
    /// Batch n, from 1 to count(); raises std::out_of_range for any other.
    [[nodiscard]] Lines& operator()(int n) { return lists_.at(static_cast<std::size_t>(n) - 1); }
    [[nodiscard]] const Lines& operator()(int n) const {
        return lists_.at(static_cast<std::size_t>(n) - 1);
    }

    void add(Lines lines) { lists_.push_back(std::move(lines)); }
    /// The Batches after n move up by one.
    void remove(int n) { lists_.erase(lists_.begin() + (n - 1)); }
    void clear() { lists_.clear(); }

private:
    std::vector<Lines> lists_;
};

} // namespace bitlux
