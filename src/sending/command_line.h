#pragma once

#include <array>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace bitlux {

/// A line of the commands to send, split at blanks; the last token keeps any further blanks;
/// missing tokens are empty. A line whose first token is the star alone is an instruction, any
/// other is the name of a Quick Command. The tokens live as long as the text.
using CommandTokens = std::array<std::string_view, 4>;

CommandTokens splitCommand(std::string_view line);

/// Whether a line is an instruction, or a name would be read as one.
bool isInstruction(std::string_view line);

inline constexpr const char* pauseLine = "* Pause";
std::string waitLine(std::string_view number, std::string_view unit);

/// The milliseconds of "ms", "s", "min", "hrs" or "days"; nothing for any other unit.
std::optional<std::int32_t> millisecondsOf(std::string_view unit);

/// A number of these units in milliseconds. Raises Failure (Conversion) for a text that is not a
/// number, and Failure (Overflow) beyond 32 bits.
std::int32_t waitMilliseconds(std::string_view number, std::int32_t factor);

} // namespace bitlux
