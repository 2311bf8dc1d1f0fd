#pragma once

#include "chips/description.h"

#include <string>

namespace bitlux {

/// Title with the bits of a field, as "MUX output [7:5]", or "Period [3,0]" where they are not
/// adjacent.
[[nodiscard]] std::string fieldTitle(const chips::Field& field);

/// The bits that a choice sets, as "[7:5] = 101".
[[nodiscard]] std::string choiceText(const chips::Field& field, std::size_t choice);

} // namespace bitlux
