#include "chips/key_depth.h"

#include <algorithm>
#include <cstddef>

namespace bitlux::chips {

namespace {

/// Walks over a text as a TOML parser does, as far as dots between keys are concerned.
class KeyWalk {
public:
    KeyWalk(std::string_view text, int most) : text_(text), most_(most) {}

    std::optional<Place> run() {
        while (at_ < text_.size()) {
            const char c = text_[at_];
            if (c == '"' || c == '\'') {
                passText(c);
                continue;
            }
            if (c == '#') {
                at_ = std::min(text_.find('\n', at_), text_.size());
                dots_ = 0;
                continue;
            }
            if (c == '.') {
                if (dots_++ == 0)
                    first_ = at_;
                if (dots_ > most_)
                    return placeOf(first_);
            } else if (endsKey(c)) {
                dots_ = 0;
            }
            ++at_;
        }
        return std::nullopt;
    }

private:
    static bool endsKey(char c) {
        return c == '\n' || c == '=' || c == ',' || c == '[' || c == ']' || c == '{' || c == '}';
    }

    /// A text in single quotes knows no escapes; one in three quotes goes over lines, and may end
    /// in two quotes of its own.
    void passText(char quote) {
        const bool isLong = text_.substr(at_, 3) == std::string(3, quote);
        at_ += isLong ? 3 : 1;
        while (at_ < text_.size()) {
            if (text_[at_] == '\\' && quote == '"') {
                at_ += 2;
                continue;
            }
            if (!isLong && text_[at_] == '\n')
                return;
            if (!isLong && text_[at_] == quote) {
                ++at_;
                return;
            }
            if (isLong && text_.substr(at_, 3) == std::string(3, quote)) {
                at_ += 3;
                for (int own = 0; own < 2 && at_ < text_.size() && text_[at_] == quote; ++own)
                    ++at_;
                return;
            }
            ++at_;
        }
    }

    [[nodiscard]] Place placeOf(std::size_t position) const {
        const std::string_view before = text_.substr(0, position);
        const std::size_t line = before.rfind('\n'); // npos + 1 is 0
        return {.line = 1 + static_cast<int>(std::count(before.begin(), before.end(), '\n')),
                .column = 1 + static_cast<int>(position - (line + 1))};
    }

    std::string_view text_;
    int most_;
    std::size_t at_ = 0;
    std::size_t first_ = 0; ///< the first dot of the key
    int dots_ = 0;
};

} // namespace

std::optional<Place> keyWithMoreDots(std::string_view text, int most) {
    return KeyWalk(text, most).run();
}

} // namespace bitlux::chips
