#pragma once

#include "chips/problem.h"

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace bitlux::mapimport {

/// What a read or a write does to a register or to a field.
struct Behaviour {
    enum class Write : std::uint8_t { Sets, OneClears, Other };

    bool readable = true;
    bool writable = true;
    bool readChanges = false; ///< a read clears or changes it
    Write write = Write::Sets;
    std::string writeName; ///< of Other, as the file has it: "oneToToggle"
    bool isVolatile = false;

    // The elements of a file, which both standards call alike. A value that is not known changes
    // nothing and gives false.
    bool setAccess(std::string_view text);
    bool setWrite(std::string_view text);
};

/// A value of a field with a name.
struct MapValue {
    std::string name;
    std::string description;
    std::uint64_t value = 0;
    std::uint64_t either = 0; ///< mask of bits that are not compared
    bool isDefault = false;   ///< all values that no other one names
    chips::Place at;
};

struct MapField {
    std::string name;
    std::string description;
    std::uint64_t first = 0; ///< lowest bit
    std::uint64_t width = 1;
    Behaviour behaviour;
    std::vector<MapValue> values;
    bool isReserved = false;
    chips::Place at;
};

struct MapRegister {
    std::string block; ///< peripheral or address block
    std::string name;  ///< with those of the clusters or register files around it
    std::string description;
    std::uint64_t address = 0; ///< as the file counts them
    std::uint64_t width = 0;
    std::uint64_t reset = 0;
    Behaviour behaviour;
    std::vector<MapField> fields;
    chips::Place at;
};

/// A register map as its file has it, arrays written out.
struct SourceMap {
    std::string title;
    std::string description;
    std::vector<MapRegister> registers;
};

} // namespace bitlux::mapimport
