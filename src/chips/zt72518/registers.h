#pragma once

#include "chips/register_map.h"

#include <array>
#include <cstdint>
#include <span>
#include <string_view>

/// The registers of the ZT7251x family.
///
/// A word has 16 bits, a high byte and a low one: operation (01 write, 00 read, 11 read of flags,
/// 10 read of the general flags), five bits of address, parity or read bit; and the data, or 00
/// and 80 for the low and the high view.
namespace bitlux::oldchips::zt72518 {

inline constexpr std::uint8_t writeOperation = 0x40;
inline constexpr std::uint8_t generalFlagsHigh = 0xBE; ///< high byte, without the read bit
inline constexpr std::uint8_t highViewByte = 0x80;

/// High bytes of a register's words, without parity or read bit.
constexpr std::uint8_t writeHigh(int address) {
    return static_cast<std::uint8_t>(writeOperation + 2 * address);
}
constexpr std::uint8_t readHigh(int address) {
    return static_cast<std::uint8_t>(2 * address);
}

/// Addresses of registers that have something of their own.
inline constexpr int ramA = 1;
inline constexpr int ramCount = 4;
inline constexpr int initWdog = 6;
inline constexpr int initMisc = 8;
inline constexpr int specialMode = 9;
inline constexpr int specialRandomBits = 6; ///< of Special Mode, below the select bits
inline constexpr int watchdogRefresh = 13;
inline constexpr int modeRandom = 14;
inline constexpr int interrupts = 18;

/// By their addresses.
extern const std::array<Register, 21> registers;

/// A page of registers.
struct Page {
    std::string_view title;
    int firstRegister = 0;
    int count = 1;
};

/// In the order of their tabs.
extern const std::array<Page, 18> pages;

/// A read button of the status row's "read all", and the variants on which it is pressed.
struct ReadAllStep {
    ControlName button;
    unsigned variants = ~0U; ///< bit i: variant i of the selection
};

extern const std::array<ReadAllStep, 16> readAllLow;
extern const std::array<ReadAllStep, 6> readAllHigh;
extern const std::array<ReadAllStep, 10> readAllFlags;

/// >SEQ buttons that ">All" of the low views, the high views and the flags press.
extern const std::array<ControlName, 16> sequenceAllLow;
extern const std::array<ControlName, 6> sequenceAllHigh;
extern const std::array<ControlName, 11> sequenceAllFlags;

} // namespace bitlux::oldchips::zt72518
