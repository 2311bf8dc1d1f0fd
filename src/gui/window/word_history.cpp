#include "gui/window/word_history.h"

namespace bitlux::gui {

void WordHistory::add(const std::string& word) {
    constexpr std::size_t most = 1000;
    if (words_.empty() || words_.back() != word) {
        words_.push_back(word);
        if (words_.size() > most)
            words_.pop_front();
    }
    place_ = words_.size();
}

std::optional<std::string> WordHistory::earlier(const std::string& shown) {
    std::size_t place = place_;
    while (place > 0 && words_[place - 1] == shown)
        --place;
    if (place == 0)
        return {};
    if (place_ == words_.size())
        typed_ = shown;
    place_ = place - 1;
    return words_[place_];
}

std::optional<std::string> WordHistory::later() {
    if (place_ == words_.size())
        return {};
    ++place_;
    return place_ == words_.size() ? typed_ : words_[place_];
}

} // namespace bitlux::gui
