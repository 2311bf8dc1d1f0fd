#pragma once

#include "platform/conversions.h"

#include <optional>
#include <string>

namespace bitlux {

/// The first line of one of the kernel's files; empty when there is none.
std::string kernelLine(const std::string& fileName);

/// The number that the line of one of the kernel's files is.
template <typename Number>
std::optional<Number> kernelNumber(const std::string& fileName, int base) {
    return wholeNumber<Number>(kernelLine(fileName), base);
}

} // namespace bitlux
