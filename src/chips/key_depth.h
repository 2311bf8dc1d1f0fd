#pragma once

#include "chips/problem.h"

#include <optional>
#include <string_view>

namespace bitlux::chips {

/// The first key of a TOML text that has more than `most` dots. The parser makes a table of each
/// and takes the stack apart with them again, so such a text must not reach it.
std::optional<Place> keyWithMoreDots(std::string_view text, int most);

} // namespace bitlux::chips
