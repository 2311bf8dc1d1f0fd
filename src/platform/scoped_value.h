#pragma once

#include <utility>

namespace bitlux {

/// Gives a variable another value during the lifetime of this object.
template <typename T>
class ScopedValue {
public:
    /// The variable outlives it.
    ScopedValue(T& variable, T value)
        : variable_(variable), before_(std::exchange(variable, std::move(value))) {}
    ~ScopedValue() { variable_ = std::move(before_); }
    ScopedValue(const ScopedValue&) = delete;
    ScopedValue& operator=(const ScopedValue&) = delete;

private:
    T& variable_;
    T before_;
};

} // namespace bitlux
