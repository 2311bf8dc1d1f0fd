#include "platform/documents/parser_guard.h"

#include <algorithm>
#include <cstddef>

namespace bitlux::documents {

namespace {

constexpr int mostDots = 8;
constexpr std::string_view byteOrderMark = "\xEF\xBB\xBF";

/// Walks over a text as the parser does, past texts and remarks.
class Walk {
public:
    explicit Walk(std::string_view text) : text_(text) {}

    std::optional<Problem> run() {
        if (text_.starts_with(byteOrderMark))
            at_ = byteOrderMark.size();
        while (at_ < text_.size()) {
            const char c = text_[at_];
            if (c == '"' || c == '\'') {
                if (!mayBegin())
                    return Problem{placeOf(at_), "a quote is inside a key or a value",
                                   "Put quotes around all of it, or remove this one."};
                passText(c);
                if (beyondAscii_)
                    return Problem{placeOf(*beyondAscii_), "this character follows a backslash",
                                   "Write the text in one line, or leave the backslash out."};
                continue;
            }
            if (c == '#') {
                at_ = std::min(text_.find('\n', at_), text_.size());
                dots_ = 0;
                continue;
            }
            if ((c == '[' || c == '{') && !mayBegin())
                return Problem{placeOf(at_), "a bracket is inside a key or a value",
                               "Put quotes around all of it, or remove this one."};
            if (c == '=' && inValue_)
                return Problem{placeOf(at_), "an equals sign is inside a value",
                               "Put quotes around the value, or remove this one."};
            if (c == '=' || c == '\n' || c == ',' || c == '{')
                inValue_ = c == '=';
            if (!isPlain(c))
                return Problem{placeOf(at_), "this character is outside a text",
                               "Put it into quotes, or remove it."};
            if (c == '.') {
                if (dots_++ == 0)
                    first_ = at_;
                if (dots_ > mostDots)
                    return Problem{placeOf(first_), "tables lie too deep in each other",
                                   "Put fewer dots into this key."};
            } else if (endsKey(c)) {
                dots_ = 0;
            }
            ++at_;
        }
        return std::nullopt;
    }

private:
    static bool isPlain(char c) {
        return (c >= ' ' && c <= '~') || c == '\t' || c == '\n' || c == '\r';
    }
    /// Whether a text may begin here, judged by what precedes it.
    [[nodiscard]] bool mayBegin() const {
        constexpr std::string_view before = " \t\n=,[{";
        return at_ == 0 || before.find(text_[at_ - 1]) != std::string_view::npos ||
               text_.substr(0, at_) == byteOrderMark;
    }
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
                if (isLong && !beyondAscii_)
                    beyondAscii_ = beyondAsciiAfter(at_ + 1);
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

    /// The position after the blanks and line ends from `start` on.
    [[nodiscard]] std::optional<std::size_t> beyondAsciiAfter(std::size_t start) const {
        const std::size_t next = text_.find_first_not_of(" \t\r\n", start);
        const bool isBeyond = next != std::string_view::npos && !isPlain(text_[next]);
        return isBeyond ? std::optional(next) : std::nullopt;
    }

    [[nodiscard]] Place placeOf(std::size_t position) const {
        const std::string_view before = text_.substr(0, position);
        const std::size_t line = before.rfind('\n'); // npos + 1 is 0
        return {.line = 1 + static_cast<int>(std::count(before.begin(), before.end(), '\n')),
                .column = 1 + static_cast<int>(position - (line + 1))};
    }

    std::string_view text_;
    std::size_t at_ = 0;
    std::size_t first_ = 0; ///< the first dot of the key
    int dots_ = 0;
    bool inValue_ = false;                   ///< after an equals sign
    std::optional<std::size_t> beyondAscii_; ///< in a text, where the parser cannot handle it
};

} // namespace

std::optional<Problem> unbearable(std::string_view text) {
    return Walk(text).run();
}

} // namespace bitlux::documents
