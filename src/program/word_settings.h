#pragma once

#include "program/program.h"

#include <array>
#include <cstdint>
#include <functional>
#include <optional>
#include <string>

namespace bitlux {

/// The bus for a program without a window.
enum class Bus : std::uint8_t { Dongle, Port, Adapter };

/// Wiring and shape of the words for a program without a window; members that are not set stay
/// unchanged.
struct WordSettings {
    std::optional<int> bits; ///< 1 to 160
    std::optional<int> type; ///< 1 to 8
    std::optional<bool> msbFirst;
    std::optional<bool> csHigh;                     ///< when asserted
    std::optional<bool> diHigh;                     ///< for a one
    std::optional<bool> doHigh;                     ///< for a one
    std::optional<int> clock;                       ///< of the dongle, 0 to 3 from the fastest
    std::optional<std::array<std::string, 4>> pins; ///< of the port's connector: CS, DI, CLK, DO
};

/// Chooses the bus in the configuration dialog; without one the dongle when there is one, else the
/// port. An adapter is used only where it is asked for, as its lines may belong to something else:
/// the first that the hardware has, also for configuration files that name another one.
///
/// False after a message when there is no port; a missing dongle raises Failure (LinkFailed), a
/// missing adapter, or a missing port where there is an adapter, Failure (PortUnusable).
/// `refusal` says why a dongle that is there was not opened; where it is empty, the text of the
/// failure says how to find out.
bool chooseBus(Program& program, std::optional<Bus> bus,
               const std::function<std::string()>& refusal);

/// Sets the controls of the configuration dialog and applies them, with words in hexadecimal. A
/// refusal of Apply is a message.
void applyWordSettings(Program& program, const WordSettings& settings);

} // namespace bitlux
