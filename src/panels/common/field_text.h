#pragma once

#include "chips/register_map.h"

#include <string>

namespace bitlux {

/// Titles with the bits of a field, as "MUX output [7:5]", or "Period [3,0]" where they lie apart.
[[nodiscard]] std::string fieldTitle(const oldchips::OptionField& field);
[[nodiscard]] std::string fieldTitle(const oldchips::ComboField& field);

/// The bits that a choice sets, as "[7:5] = 101".
[[nodiscard]] std::string choiceText(const oldchips::OptionField& field, int value);
[[nodiscard]] std::string choiceText(const oldchips::CheckBit& check);

} // namespace bitlux
