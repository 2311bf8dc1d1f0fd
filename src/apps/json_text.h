#pragma once

#include <string>
#include <string_view>

namespace bitlux {

/// A UTF-8 text as a string of JSON, with its quotes.
std::string jsonString(std::string_view text);

} // namespace bitlux
