#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace bitlux {

/// Text of unknown origin as it may stand in a message: characters that a terminal would obey and
/// bytes that are no UTF-8 become '?', and of a text longer than `most` bytes the start stands with
/// "..." behind it.
std::string printable(std::string_view text, std::size_t most = std::string_view::npos);

} // namespace bitlux
