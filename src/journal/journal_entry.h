#pragma once

#include "journal/journal_settings.h"
#include "platform/usb_endpoint.h"
#include "transfer/extra_pins.h"

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <variant>

namespace bitlux {

/// The version of the format that is written, and the newest that is read.
inline constexpr int journalVersion = 1;

/// A word; its digits are as many as the settings before it say.
struct JournalWord {
    std::string sent;
    std::optional<std::string> received; ///< nothing where no answer came
    bool updatesPins = false;            ///< the dongle takes the levels of its extra pins
    bool topBit = false;                 ///< the first byte of its frame has 0x80 added
};

/// A register of the port was written for its pins.
struct JournalPins {
    PinRegister pinRegister = PinRegister::Data;
    std::uint8_t value = 0;
};

/// A frame to the dongle that is no word.
struct JournalCommand {
    UsbFrame frame{};
    std::optional<UsbFrame> answer;
};

/// What a replay does nothing for: waits are in the times, boxes come by themselves.
struct JournalRemark {};

/// A line of a journal. The settings of the first line come as an entry too.
struct JournalEntry {
    std::size_t line = 0;      ///< from 1
    std::int64_t begin = 0;    ///< nanoseconds since the start of the journal
    std::int64_t duration = 0; ///< nanoseconds
    std::variant<JournalSettings, JournalWord, JournalPins, JournalCommand, JournalRemark> content;

    [[nodiscard]] std::int64_t end() const { return begin + duration; }
};

/// As "10 70 00 A5 C3 00 00 00".
std::string frameText(const UsbFrame& frame);

} // namespace bitlux
