#pragma once

#include "transfer/wire_trace.h"

#include <cstddef>
#include <cstdint>
#include <deque>

namespace bitlux {

/// The last accesses and frames on the wire: when it is full, the oldest are dropped.
class WireRing : public WireListener {
public:
    static constexpr std::size_t usualLimit = 100'000;

    void add(const WireAccess& access) override {
        accesses_.push_back(access);
        shorten();
    }
    void clear() {
        accesses_.clear();
        dropped_ = 0;
    }

    [[nodiscard]] const std::deque<WireAccess>& accesses() const { return accesses_; }
    /// The number dropped since it was cleared.
    [[nodiscard]] std::uint64_t dropped() const { return dropped_; }
    [[nodiscard]] std::size_t limit() const { return limit_; }
    void setLimit(std::size_t limit) {
        limit_ = limit;
        shorten();
    }

private:
    void shorten() {
        for (; accesses_.size() > limit_; ++dropped_)
            accesses_.pop_front();
    }

    std::deque<WireAccess> accesses_;
    std::uint64_t dropped_ = 0;
    std::size_t limit_ = usualLimit;
};

} // namespace bitlux
