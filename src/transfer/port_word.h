#pragma once

#include "platform/parallel_port.h"
#include "session/port_pins.h"

#include <cstdint>

namespace bitlux {

/// A pin of the data register with its two levels, as bits of the register.
struct PortLine {
    PortLine(int pin, std::int16_t oneLevel, std::int16_t otherLevel)
        : mask(PortPins<8>::mask(pin)),
          one(oneLevel != 0 ? mask : std::uint8_t{0}),
          other(otherLevel != 0 ? mask : std::uint8_t{0}) {}

    /// The register value with this pin at the level of `isOne`.
    [[nodiscard]] std::uint8_t in(std::uint8_t value, bool isOne) const {
        return static_cast<std::uint8_t>((value & ~mask) | (isOne ? one : other));
    }

    std::uint8_t mask;
    std::uint8_t one;
    std::uint8_t other;
};

/// The data for sending a word on the port, gathered once per word. Lines may share a pin; then the
/// one that is set last wins, in the order of the settings.
struct PortWord {
    ParallelPort& port;
    std::int16_t address;
    bool isFast; ///< the mode of the port; nothing can change it during a word
    PortPins<8>& shadow;
    const std::int16_t* word;
    std::int16_t* samples; ///< one of the status register for each element, 0 for one not sent
    int length;
    PortLine chipSelect; ///< one: asserted
    PortLine dataIn;     ///< one: a one
    PortLine clock;      ///< one: high
};

/// Sends a word of a type (1 to 8). False when it has an element that is not a bit; then the bits
/// before it were sent, chip select stays asserted and the clock keeps its level. The shadow
/// register follows. When the port fails during a word, the shadow stays as it was when chip select
/// was asserted.
bool sendPortWord(const PortWord& word, int type, bool msbFirst);

} // namespace bitlux
