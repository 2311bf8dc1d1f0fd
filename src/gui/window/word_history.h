#pragma once

#include <cstddef>
#include <deque>
#include <optional>
#include <string>

namespace bitlux::gui {

/// The words that were sent, recalled like the history of a shell. Keeps the last thousand, without
/// repetitions in succession.
class WordHistory {
public:
    /// Adds a word that is sent, and ends the recall.
    void add(const std::string& word);

    /// The previous word; nothing at the oldest. `shown` is the text of the field: an equal word is
    /// skipped, and it is kept when the recall begins.
    [[nodiscard]] std::optional<std::string> earlier(const std::string& shown);
    /// The next word, after the newest the text that was kept; nothing when no recall is active.
    [[nodiscard]] std::optional<std::string> later();

private:
    std::deque<std::string> words_;
    std::size_t place_ = 0; ///< of the word that is shown; words_.size() when no recall is active
    std::string typed_;     ///< text of the field when the recall began
};

} // namespace bitlux::gui
