#pragma once

#include "chips/chip_library.h"
#include "chips/chip_reader.h"
#include "registers/register_catalog.h"

#include <stdexcept>
#include <string>

namespace bitlux::test {

/// A chip with one register of each kind: words of 16 bits, bit 15 for a write, bit 14 for flags,
/// five bits of address, eight of data.
inline constexpr const char* registerChip = R"toml(
[chip]
title = "Pump driver"
[word]
bits = 16
type = 2
address = "12:8"
data = "7:0"
write = 0x8000
flags = 0x4000
[word.status]
first_bit = 13
of_read = "15:13"
bits = ["Fault", "-", "Ready"]

[[register]]
title = "Mode"
address = 1
reset = 0x22
bits = ["S0", "S1", "S2", "T0", "T1", "-", "Watch it", "-"]
  [[register.field]]
  title = "State"
  bits = "2:0"
  texts = ["Off", "Standby", "2", "Run = on"]
  [[register.field]]
  title = "Time"
  bits = "3,4" # apart on purpose: bit 3 counts double
[[register]]
title = "Speed"
address = 2
width = 8
never_written = 0x80
always_written = 0x40
[[register]]
title = "Faults"
address = 3
access = "write one clears"
bits = ["Open", "Short", "Hot"]
[[register]]
title = "Log"
address = 4
access = "read clears"
bits = ["Lost", "Full"]
[[register]]
title = "Key"
address = 5
access = "write only"
bits = ["K0", "K1"]
  [[register.field]]
  title = "Lock"
  bits = "0"
  texts = ["open", "shut"]
[[register]]
title = "Code"
address = 6
volatile = true
width = 8
  [[register.view]]
  title = "Read"
  [[register.view]]
  title = "Read state"
  group = "Code state"
  reads = "flags"
  bits = ["Good", "Bad"]
[[command]]
title = "Stop"
word = 0x8100
)toml";

inline RegisterCatalog registerCatalog(const std::string& text = registerChip) {
    chips::ChipFile file = chips::readChip(text, "pump.toml");
    if (!file.chip)
        throw std::logic_error(chips::describe(file.problems.front(), "pump.toml"));
    return RegisterCatalog(file.chip);
}

} // namespace bitlux::test
