#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace bitlux {

/// Makes text of unknown origin safe for a message: control characters and bytes that are not UTF-8
/// become '?', and a text longer than `most` bytes is cut and ends in "...".
std::string printable(std::string_view text, std::size_t most = std::string_view::npos);

} // namespace bitlux
