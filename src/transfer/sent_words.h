#pragma once

#include "platform/clock.h"
#include "platform/usb_endpoint.h"
#include "session/session.h"

#include <cstddef>
#include <cstdint>
#include <deque>
#include <memory>
#include <span>
#include <vector>

namespace bitlux {

/// A word that was sent, with all data that determined its lines. Plain, so that room for many
/// costs nothing.
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

    std::int64_t begin; ///< nanoseconds, before its first access or frame
    std::int64_t end;   ///< after its last
    bool onDongle;
    bool msbFirst;

    // On the port
    std::int16_t length; ///< bits
    std::int16_t type;   ///< 1 to 8
    std::int16_t address;
    std::uint8_t dataBefore;    ///< the data register before the word
    std::uint8_t controlBefore; ///< the control register
    Levels levels;
    Pins pins;
    std::int16_t* bits; ///< sent() and samples(), in the store

    // Through the dongle
    UsbFrame frame;
    UsbFrame answer;

    /// On the port: as WordToSend and PortStatusSamples.
    [[nodiscard]] std::span<const std::int16_t> sent() const {
        return {bits, static_cast<std::size_t>(length)};
    }
    [[nodiscard]] std::span<const std::int16_t> samples() const {
        return {bits + length, static_cast<std::size_t>(length)};
    }
};

/// Keeps the data of the last words: enough to list them and to reconstruct their lines. Every word
/// passes through here: this costs little. Memory is taken as words come, in blocks.
class SentWords {
public:
    static constexpr std::size_t most = 20'000; ///< at least so many of the last ones are kept

    /// The clock outlives it.
    explicit SentWords(const Clock& clock) : clock_(clock) {}
    SentWords(const SentWords&) = delete;
    SentWords& operator=(const SentWords&) = delete;

    /// Records what is known before a word is sent on the port.
    struct Before {
        std::int64_t begin = 0;
        std::uint8_t data = 0;
    };
    [[nodiscard]] Before before(const Session& session) const {
        return {.begin = clock_.nanoseconds(), .data = session.DataPortPins.value()};
    }

    /// A word was sent on the port. One that is longer than `SentWord::longest` is skipped.
    void add(const Session& session, const Before& before);
    /// A word was sent through the dongle; `begin` is when its frame was submitted.
    void add(const Session& session, std::int64_t begin, const UsbFrame& frame,
             const UsbFrame& answer);
    [[nodiscard]] std::int64_t now() const { return clock_.nanoseconds(); }

    /// The list of words begins with the next one. last() still returns those before.
    void restart();
    /// Number of the first word of the list that is kept, counted from 0 since the program began.
    [[nodiscard]] std::size_t first() const;
    /// Number behind the last word.
    [[nodiscard]] std::size_t end() const { return count_; }
    /// When the first word of the list began, on the clock of the words. The word itself may be
    /// gone.
    [[nodiscard]] std::int64_t origin() const { return origin_; }
    /// A word from first() to end(); valid until the next one is added.
    [[nodiscard]] const SentWord& word(std::size_t number) const;
    /// The last words, the oldest first; valid until the next one is added.
    [[nodiscard]] std::vector<SentWord> last(std::size_t count) const;

private:
    struct Block {
        std::size_t first = 0; ///< number of its first word
        std::unique_ptr<SentWord[]> words;
        std::unique_ptr<std::int16_t[]> bits;
    };

    /// Room for a word; null for one that is too long.
    SentWord* next(std::size_t length, std::int64_t begin) {
        if (next_ == end_ || length > capacity_) [[unlikely]]
            if (!beginBlock(length, begin))
                return nullptr;
        ++count_;
        return next_++;
    }
    bool beginBlock(std::size_t length, std::int64_t begin);
    void dropBlocks(std::size_t kept);

    const Clock& clock_;
    std::deque<Block> blocks_;
    SentWord* next_ = nullptr; ///< in the last block
    SentWord* end_ = nullptr;
    std::int16_t* bits_ = nullptr; ///< of the next word
    std::size_t capacity_ = 0;     ///< of the last block
    std::size_t count_ = 0;        ///< of all words
    std::size_t from_ = 0;         ///< where the list begins
    std::int64_t origin_ = 0;
};

} // namespace bitlux
