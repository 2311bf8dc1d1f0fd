#pragma once

#include "session/session.h"

#include <array>
#include <cstdint>
#include <optional>

#include <nlohmann/json_fwd.hpp>

namespace bitlux {

/// What determines how words go out, as a journal has it.
struct JournalSettings {
    bool onDongle = false;
    std::int16_t bits = 8; ///< 1 to 160
    std::int16_t type = 1; ///< 1 to 8
    bool msbFirst = true;
    bool csHigh = false; ///< when asserted
    bool diHigh = true;  ///< for a one
    bool doHigh = true;  ///< for a one

    // On the port
    /// CS, DI, CLK: bits of the data register; DO: bit of the status register.
    std::array<std::int16_t, 4> pins = {};
    std::uint8_t data = 0;    ///< the data register
    std::uint8_t control = 0; ///< the control register

    // Through the dongle
    std::int16_t clock = 0;                    ///< SPIBaudRate
    std::uint8_t donglePins0 = 0;              ///< USBExtraPins0
    std::uint8_t donglePins1 = 0;              ///< USBExtraPins1
    std::optional<std::uint8_t> lastByte = {}; ///< of the frames, where a panel sets it

    /// Those in force.
    static JournalSettings of(const Session& session, bool onDongle);
    /// Into the session, but for the bus, and those of the other bus; no pin changes.
    void applyTo(Session& session) const;
    /// Equal but for the lines CS, DI and CLK in the data register, which each word moves.
    [[nodiscard]] bool isLike(JournalSettings other) const;

    bool operator==(const JournalSettings&) const = default;

    /// Adds the members to an object.
    void addTo(nlohmann::ordered_json& object) const;
    /// Raises Failure (Conversion), with a sentence without its full stop, for a member that is
    /// missing or wrong.
    static JournalSettings from(const nlohmann::ordered_json& object);
};

} // namespace bitlux
