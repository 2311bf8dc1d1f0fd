#pragma once

#include "platform/clock.h"
#include "platform/usb_endpoint.h"
#include "session/session.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <vector>

namespace bitlux {

/// A word that was sent, with all data that determined its lines.
struct SentWord {
    static constexpr std::size_t longest = 160; ///< bits

    /// The levels of the session at that time, in its order.
    struct Levels {
        std::int16_t CSAssertLevel, CSIdleLevel, DIOneLevel, DIZeroLevel;
        std::int16_t ClockHighLevel, ClockLowLevel, DOHighValue, DOLowValue;
    };
    /// Likewise the pins.
    struct Pins {
        std::int16_t DIPin, CSPin, ClockPin, DOPin;
    };

    std::int64_t begin = 0; ///< nanoseconds, before its first access or frame
    std::int64_t end = 0;   ///< after its last
    bool onDongle = false;
    bool msbFirst = true;

    // On the port
    std::int16_t length = 0; ///< bits
    std::int16_t type = 1;
    std::int16_t address = 0;
    std::uint8_t dataBefore = 0;    ///< the data register before the word
    std::uint8_t controlBefore = 0; ///< the control register
    Levels levels{};
    Pins pins{};
    std::array<std::int16_t, longest> sent{};    ///< as WordToSend, so many as the word has bits
    std::array<std::int16_t, longest> samples{}; ///< as PortStatusSamples

    // Through the dongle
    UsbFrame frame{};
    UsbFrame answer{};
};

/// Keeps the data of the last few words, so that their lines can be reconstructed. Every word
/// passes through here: this costs little, and nothing is allocated.
class SentWords {
public:
    static constexpr std::size_t most = 8;

    /// The clock outlives it.
    explicit SentWords(const Clock& clock) : clock_(clock) {}

    /// Records what is known before a word is sent on the port.
    struct Before {
        std::int64_t begin = 0;
        std::uint8_t data = 0;
    };
    [[nodiscard]] Before before(const Session& session) const {
        return {.begin = clock_.nanoseconds(), .data = session.DataPortPins.value()};
    }

    /// A word was sent on the port. One that is longer than `longest` is skipped.
    void add(const Session& session, const Before& before);
    /// A word was sent through the dongle; `begin` is when its frame was submitted.
    void add(const Session& session, std::int64_t begin, const UsbFrame& frame,
             const UsbFrame& answer);
    [[nodiscard]] std::int64_t now() const { return clock_.nanoseconds(); }

    /// From the oldest kept to the last.
    [[nodiscard]] std::vector<SentWord> words() const;

private:
    SentWord& next() { return words_[count_++ % most]; }

    const Clock& clock_;
    std::array<SentWord, most> words_;
    std::size_t count_ = 0; ///< of all words
};

} // namespace bitlux
