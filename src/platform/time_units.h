#pragma once

#include <cstdint>

namespace bitlux {

/// In nanoseconds.
constexpr std::int64_t microsecond = 1000;
constexpr std::int64_t millisecond = 1'000'000;

} // namespace bitlux
