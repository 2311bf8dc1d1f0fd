#pragma once

#include <cstdint>
#include <span>
#include <string>

namespace bitlux {

/// The elements of a word, element 0 the least significant bit.
using WordBits = std::span<const std::int16_t>;

/// Digits from the most significant bit on the left, a blank to the right of bits 8, 16, 24, 32 and
/// 40. Elements are written as decimal numbers.
std::string binaryTextSent(WordBits bits);
/// The same with "x" for an element that is neither 0 nor 1.
std::string binaryTextReceived(WordBits bits);

/// Upper-case hexadecimal, one digit per started group of four bits.
std::string hexText(WordBits bits);

/// Hexadecimal digits of a word of this many bits.
constexpr int hexDigits(int bits) noexcept {
    return (bits + 3) / 4;
}

} // namespace bitlux
