#pragma once

#include <cstdint>
#include <optional>
#include <string_view>

namespace bitlux::mapimport {

/// Whose way of writing numbers: "#101" is binary in CMSIS-SVD, "#1F" hexadecimal in IP-XACT.
enum class Notation : std::uint8_t { Svd, IpXact };

/// A whole number: "18", "+18", "0x12", "#...", "16k" (times 1,024); in CMSIS-SVD also "0b10010",
/// in IP-XACT "'h12", "8'b0001_0010" and "'d18". Nothing for any other text and beyond 64 bits.
std::optional<std::uint64_t> numberFrom(std::string_view text, Notation notation);

/// The value of an enumeration, some bits of which may be either.
struct Pattern {
    std::uint64_t value = 0;
    std::uint64_t either = 0; ///< mask; these bits are 0 in `value`
};

/// A number, or a binary one with an "x" for each bit that is not compared.
std::optional<Pattern> patternFrom(std::string_view text, Notation notation);

} // namespace bitlux::mapimport
