#pragma once

#include "platform/failure.h"

#include <cstddef>
#include <string_view>

namespace bitlux {

/// The failure for a word with fewer bits than the current word length; `what` begins the sentence.
/// The kind is OutOfRange.
[[nodiscard]] Failure doesNotFit(std::string_view what, std::size_t bits, int wanted);
/// The same of a Quick Command.
[[nodiscard]] Failure commandDoesNotFit(std::string_view name, std::size_t bits, int wanted);

} // namespace bitlux
