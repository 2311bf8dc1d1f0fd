#pragma once

#include "chips/description.h"
#include "platform/failure.h"

#include <string_view>

#include <fmt/format.h>

namespace bitlux {

/// A register by its title in the chip's file; raises Failure (OutOfRange) when there is none.
inline const chips::Register& describedRegister(const chips::Chip& chip, std::string_view title) {
    if (const chips::Register* found = chip.find(title))
        return *found;
    throw Failure(Failure::Kind::OutOfRange,
                  fmt::format("{} has no register \"{}\"", chip.title, title));
}

} // namespace bitlux
