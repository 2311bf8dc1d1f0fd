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

    /// Records from now on, behind the words that there are already; whoever owns the recorder has
    /// it told what happens on the wire. All outlive it.
    WordRecorder(const Session& session, WordEngine& engine, DongleLink& dongle,
                 std::size_t limit = usualLimit, std::vector<WordRecord> before = {});

    void add(const WireAccess& access) override;
    /// Follows no more words and keeps those it has.
    void stop() { subscriptions_ = {}; }

    /// From the oldest to the last, with numbers that follow each other.
    [[nodiscard]] const std::deque<WordRecord>& words() const { return words_; }
    /// How many words there were, those included that were dropped.
    [[nodiscard]] std::uint64_t count() const { return count_; }
    /// The word of a number, nullptr when it is no longer kept.
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
    WordRecord current_; ///< the word on its way, or what happens before the next
    bool inWord_ = false;
    std::array<Subscription, 4> subscriptions_;
};

} // namespace bitlux
