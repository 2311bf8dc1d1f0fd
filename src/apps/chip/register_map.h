#pragma once

#include "chips/description.h"

#include <ostream>

namespace bitlux {

/// Prints what a chip's file says of words, registers and commands, in lines of up to 80 columns:
/// address, title, access and reset value of each register, and below it its bits with what they
/// mean. Only a single text that is longer goes beyond.
void printRegisterMap(const chips::Chip& chip, std::ostream& output);

} // namespace bitlux
