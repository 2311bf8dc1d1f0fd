#pragma once

#include "registers/register_access.h"
#include "registers/word_decoder.h"

#include <cstdint>
#include <string>

namespace bitlux {

/// Values of registers as lines for people and as members of JSON objects.

/// "INIT = 0x000010", and below it a line for each field that counts.
std::string valueLines(const RegisterItem& item, std::uint64_t value);
/// "INIT 0x000010 -> 0x000210", and below it a line for each field that differs.
std::string changeLines(const RegisterItem& item, std::uint64_t before, std::uint64_t after);

/// `"name":"INIT","value":16,"hex":"000010","fields":[...]`
std::string valueMembers(const RegisterItem& item, std::uint64_t value);
/// Likewise of two values; null for one that is missing.
std::string changeMembers(const SnapshotDifference& difference);

} // namespace bitlux
