#pragma once

#include "chips/description.h"

#include <cstddef>
#include <string>
#include <string_view>

namespace bitlux::chips {

inline constexpr std::size_t longestFile = 1'048'576; ///< bytes of a chip's file
inline constexpr std::size_t mostRegisters = 4096;

/// A chip, or why there is none.
struct ChipFile {
    ChipPtr chip; ///< null when there are problems
    Problems problems;
};

/// Whether a text can name a chip: 1 to 64 letters, digits, "-" and "_".
bool isChipName(std::string_view text);

/// Reads the text of a chip's file and validates what it says. Names that the text leaves out are
/// derived from titles. `file` is for messages; its name without folder and ending names a chip
/// that has no name of its own.
ChipFile readChip(std::string_view text, const std::string& file);
/// The same for a text that readChip has found good before, at less than half the time: the build
/// has done so with the embedded chips.
ChipFile readCheckedChip(std::string_view text, const std::string& file);

/// The bytes of a file, or why there are none.
struct ChipText {
    std::string text;
    Problems problems;
};

/// Reads a file that is there, is no folder, and has no more than longestFile bytes.
ChipText readChipText(const std::string& fileName);

/// The same as readChip for a file. One that cannot be read, or that is too long, is a problem as
/// well.
ChipFile readChipFile(const std::string& fileName);

} // namespace bitlux::chips
