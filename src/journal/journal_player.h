#pragma once

#include "journal/journal_entry.h"
#include "platform/clock.h"
#include "transfer/dongle_link.h"
#include "transfer/pin_layer.h"
#include "transfer/word_engine.h"

#include <cstdint>
#include <functional>
#include <optional>
#include <string>

namespace bitlux {

/// Sends again what a journal has, and compares the answers.
class JournalPlayer {
public:
    /// What it works with; all outlive it.
    struct Parts {
        Session& session;
        WordEngine& engine;
        DongleLink& dongle;
        PinLayer& pins;
        const Clock& clock;
        /// Lets time pass until then; empty for a replay without pauses.
        std::function<void(std::int64_t nanoseconds)> waitUntil;
        /// Brings the program to the bus of the settings; empty where one bus takes all.
        std::function<void(bool onDongle)> chooseBus;
    };

    /// Pauses shorter than this are not made: they are what the program itself took.
    static constexpr std::int64_t shortestPause = 1'000'000;

    /// An answer that is not the one of the journal.
    struct Difference {
        std::size_t line = 0;            ///< of the journal
        std::uint64_t word = 0;          ///< its number, 0 for a command to the dongle
        int bits = 0;                    ///< of the word
        std::string sent;                ///< the word, or the frame of the command
        std::optional<std::string> then; ///< nothing where no answer came
        std::optional<std::string> now;
    };

    explicit JournalPlayer(Parts parts) : parts_(std::move(parts)) {}

    /// Takes the settings of the first line; the pins of the port go to their levels.
    void begin(const JournalSettings& settings);
    /// A line after the first, when its time has come. Raises Failure: OutOfRange for a word that
    /// the bus cannot carry, and for a command to the dongle that has none.
    void play(const JournalEntry& entry);

    /// How many words were sent.
    [[nodiscard]] std::uint64_t words() const { return words_; }
    [[nodiscard]] std::uint64_t differences() const { return differences_; }
    Event<const Difference&> differs;

private:
    void pauseBefore(const JournalEntry& entry);
    void take(const JournalSettings& settings);
    void send(const JournalEntry& entry, const JournalWord& word);
    void send(const JournalEntry& entry, const JournalCommand& command);
    void write(const JournalPins& pins);
    void compare(const Difference& difference);

    Parts parts_;
    std::int64_t endThen_ = 0; ///< of the last line, in the journal
    std::int64_t endNow_ = 0;  ///< on the clock
    std::uint64_t words_ = 0;
    std::uint64_t differences_ = 0;
};

} // namespace bitlux
