#pragma once

#include "platform/documents/problem.h"

#include <optional>
#include <string_view>

namespace bitlux::documents {

/// Finds what the TOML parser cannot handle. These are: a key of more than eight dots, each of
/// which becomes a nested table; outside texts and comments characters beyond ASCII, control
/// characters, and quotes, brackets and equals signs in the middle of a key or a value; and in a
/// text of several lines a character beyond ASCII after a backslash, or after the line end that the
/// backslash removes. Returns the first one of a text, or nothing.
std::optional<Problem> unbearable(std::string_view text);

} // namespace bitlux::documents
