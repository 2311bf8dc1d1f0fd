#pragma once

#include "chips/description.h"

#include <cstddef>
#include <string>
#include <string_view>

namespace bitlux::chips {

inline constexpr std::size_t longestFile = 1'048'576; ///< bytes of a chip's file
inline constexpr std::size_t mostRegisters = 4096;

/// A chip, or the problems of its file.
struct ChipFile {
    ChipPtr chip; ///< null when there are problems
    Problems problems;
};

/// Whether a text is a valid name of a chip: 1 to 64 letters, digits, "-" and "_".
bool isChipName(std::string_view text);

/// Reads the text of a chip's file and validates it. Names that the text omits are derived from
/// titles. `file` is for messages; its name without folder and extension is the default name of the
/// chip.
ChipFile readChip(std::string_view text, const std::string& file);
/// The same for a text that readChip has accepted before, in less than half the time: the build has
/// checked the embedded chips.
ChipFile readCheckedChip(std::string_view text, const std::string& file);

/// The bytes of a file, or the reason of a failure.
struct ChipText {
    std::string text;
    Problems problems;
};

/// Reads an existing file of at most longestFile bytes.
ChipText readChipText(const std::string& fileName);

/// The same as readChip for a file. A file that cannot be read, or that is too long, is a problem
/// too.
ChipFile readChipFile(const std::string& fileName);

} // namespace bitlux::chips
