#pragma once

#include "platform/linux/dongle_numbers.h"

#include <array>
#include <cstdint>
#include <optional>
#include <string_view>

namespace bitlux {

/// A family of chips that adapters are made with.
struct FtdiChip {
    std::string_view name; ///< as "FT232R"
    std::uint16_t release; ///< what its device descriptor has in bcdDevice
    int type;              ///< as libftdi numbers it
    int channels;          ///< engines of eight lines, one at each interface
    /// The clock that a divisor makes the byte rate of, in Hz. A byte rate is `ratio` times the
    /// baud rate of the same divisor. FTDI documents 16 times for the chips of full speed. For
    /// those of high speed it documents none; 5 times was measured on them by users of libftdi and
    /// of pyftdi.
    int byteClock;
    int ratio;
    int slowest; ///< bytes a second
    int fastest;
};

/// What a chip can do for a byte rate.
struct FtdiRate {
    int baud;     ///< to ask libftdi for
    double bytes; ///< a second, that come of it
};

/// Products of the maker of these chips, FTDI, as they leave it.
inline constexpr std::uint16_t ftdiVendor = 0x0403;
inline constexpr std::array<std::uint16_t, 5> ftdiProducts{0x6001, 0x6010, 0x6011, 0x6014, 0x6015};
bool isFtdi(const UsbNumbers& numbers);

/// Null for a release that cannot sample all its lines with each byte.
const FtdiChip* findFtdiChip(std::uint16_t release);

/// The byte rate nearest to `bytes` a second, with what libftdi makes of its baud rate; nothing for
/// one that is slower or faster than the chip can.
std::optional<FtdiRate> nearestRate(const FtdiChip& chip, int bytes);

} // namespace bitlux
