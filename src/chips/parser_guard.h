#pragma once

#include "chips/problem.h"

#include <optional>
#include <string_view>

namespace bitlux::chips {

/// What the TOML parser must not be given, since it does not bear it: a key of more than eight
/// dots, of which each becomes a table in a table; outside texts and remarks characters beyond
/// ASCII, control characters, and quotes, brackets and equals signs in the middle of a key or a
/// value; and in a text of several lines a character beyond ASCII behind a backslash, or behind the
/// line end that it takes away. The first one of a text, or nothing.
std::optional<Problem> unbearable(std::string_view text);

} // namespace bitlux::chips
