#pragma once

#include "bench/chip.h"
#include "chips/description.h"

#include <memory>
#include <string_view>

namespace bitlux {

/// The model of a chip, made from its description; `device` is one of its devices.
///
/// It accepts words of the chip's length, the most significant bit first; others are ignored, and
/// so are words whose check is wrong. A write is stored as far as the access of its register
/// allows: a bit that is never written keeps its reset value, ones clear where the file says so. A
/// read answers during the same word or with the next one, and clears what it reads where the view
/// says so. An answer has the status bits as they were when its word began, the data of a read, and
/// its check.
///
/// Switches: the bits of views with a value of their own, the bits of registers that are only read
/// or cleared, the status bits, and faults. The parts named in the file add the chip's
/// peculiarities.
///
/// Raises Failure (OutOfRange) when the chip has no such device, (File) for an unknown part.
std::unique_ptr<Chip> makeChipModel(chips::ChipPtr chip, std::string_view device);

} // namespace bitlux
