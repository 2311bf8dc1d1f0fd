#pragma once

#include "chips/problem.h"

#include <optional>
#include <string_view>

namespace bitlux::chips {

/// What the TOML parser must not be given, since it does not bear it: a key of more than eight
/// dots, of which each becomes a table in a table; and outside texts and remarks characters beyond
/// ASCII, control characters, and quotes, brackets and equals signs in the
/// middle of a key or a value. The first one of a
/// text, or nothing.
std::optional<Problem> unbearable(std::string_view text);

} // namespace bitlux::chips
