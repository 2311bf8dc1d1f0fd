#pragma once

#include "bench/shift_device.h"
#include "chips/register_map.h"

#include <memory>
#include <span>

namespace bitlux {

/// A chip of registers as its table and the format of its words tell. A write is taken where the
/// table has its address, and only as many bits as the register has; a read answers during the
/// same word, with what was written last and 0 at first. Both views show the same.
///
/// Words travel most significant bit first. One of another length changes nothing.
std::unique_ptr<Device> makeRegisterFile(const oldchips::WordFormat& format,
                                         std::span<const oldchips::Register> table);

} // namespace bitlux
