#pragma once

#include "transfer/word_engine.h"
#include "waveform/word_record.h"

#include <array>
#include <deque>

namespace bitlux {

/// The names that the extra pins of the port have in a session.
ExtraPinNames extraPinNames(const Session& session);

/// Keeps the last words on the wire. Its memory is bounded: when it is full, the oldest words are
/// dropped, each as a whole; the last word is always kept.
class WordRecorder : public WireListener {
public:
    static constexpr std::size_t usualLimit = 16U << 20U; ///< bytes

    /// Records from now on, after the words already recorded. The owner passes the events of the
    /// wire to the recorder. All outlive it.
    WordRecorder(const Session& session, WordEngine& engine, DongleLink& dongle,
                 std::size_t limit = usualLimit, std::vector<WordRecord> before = {});

    void add(const WireAccess& access) override;
    /// Stops recording and keeps the words.
    void stop() { subscriptions_ = {}; }

    /// From the oldest to the last, numbered consecutively.
    [[nodiscard]] const std::deque<WordRecord>& words() const { return words_; }
    /// The number of words since the beginning, including dropped ones.
    [[nodiscard]] std::uint64_t count() const { return count_; }
    /// The word with a number; null when it is no longer kept.
    [[nodiscard]] const WordRecord* word(std::uint64_t number) const;

private:
    void begin();
    void finish(bool complete);
    void keep(WordRecord record);
    void dropOldest();
    void takeShape();
    void forgetBetween();

    const Session& session_;
    const WordEngine& engine_;
    std::size_t limit_;
    std::deque<WordRecord> words_;
    std::size_t bytes_ = 0; ///< of the words that are kept
    std::uint64_t count_ = 0;
    WordRecord current_; ///< the word in transfer, or what happens before the next
    bool inWord_ = false;
    std::array<Subscription, 4> subscriptions_;
};

} // namespace bitlux
