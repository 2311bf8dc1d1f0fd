#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace bitlux::forms {

/// Up to three of `names` that are most similar to `wanted`, the nearest first; none when nothing
/// is.
std::vector<std::string> nearNames(std::string_view wanted, const std::vector<std::string>& names);

} // namespace bitlux::forms
