#pragma once

#include <cstddef>
#include <deque>
#include <optional>
#include <string>

namespace bitlux::gui {

/// The words that were sent, to be walked through as a shell's history is. The last thousand; none
/// is the same as the one before it.
class WordHistory {
public:
    /// A word that goes out; the walk begins anew.
    void add(const std::string& word);

    /// The word before; nothing at the oldest. `shown` is what stands in the field: it is passed
    /// over, and kept when the walk begins.
    [[nodiscard]] std::optional<std::string> earlier(const std::string& shown);
    /// The word behind, and what was kept behind the newest; nothing where no walk is on.
    [[nodiscard]] std::optional<std::string> later();

private:
    std::deque<std::string> words_;
    std::size_t place_ = 0; ///< of the word that is shown; words_.size() while no walk is on
    std::string typed_;     ///< what was in the field when the walk began
};

} // namespace bitlux::gui
