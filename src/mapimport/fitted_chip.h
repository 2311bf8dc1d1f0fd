#pragma once

#include "chips/description.h"

#include <cstdint>
#include <string>
#include <vector>

namespace bitlux::mapimport {

/// What a chip's file says of a field.
struct FittedField {
    std::string title;
    int first = 0; ///< lowest bit
    int width = 1;
    std::vector<chips::Choice> choices; ///< by their codes
    bool shares = false;
    std::string note;
};

/// What a chip's file says of a register.
struct FittedRegister {
    std::string title;
    std::string page;
    std::uint64_t address = 0;
    int width = 0;
    std::uint64_t reset = 0;
    chips::Access access = chips::Access::ReadWrite;
    bool isVolatile = false;
    bool readClears = false; ///< of a register that can be written
    std::vector<FittedField> fields;
    std::string note;
};

/// A register map of which a chip's file can be made.
struct FittedChip {
    std::string title;
    std::string description;
    std::vector<FittedRegister> registers;
};

} // namespace bitlux::mapimport
