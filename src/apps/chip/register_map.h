#pragma once

#include "chips/description.h"

#include <ostream>

namespace bitlux {

/// Prints the words, registers and commands of a chip's file in lines of up to 80 columns: address,
/// title, access and reset value of each register, and below it its bits with their meaning. Only a
/// longer single text exceeds the width.
void printRegisterMap(const chips::Chip& chip, std::ostream& output);

} // namespace bitlux
