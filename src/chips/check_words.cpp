#include "chips/findings.h"

#include <fmt/format.h>

namespace bitlux::chips {

namespace {

constexpr int frameBits = 40; ///< data bits of a dongle's frame
constexpr int byteBits = 8;

class WordsCheck {
public:
    explicit WordsCheck(const Findings& found)
        : found_(found), word_(found.chip.word), check_(found.chip.word.check) {}

    void run() const {
        checkBits();
        checkConstants();
        if (check_.exists())
            checkCheck();
        for (const Command& any : found_.chip.commands)
            checkFits(any.at, any.word.value_or(0), "the word of the command");
    }

private:
    void checkBits() const {
        for (const auto& [bits, name] :
             {std::pair(&word_.address, "address"), std::pair(&word_.data, "data"),
              std::pair(&word_.statusOfRead, "of_read")})
            if (bits->highest() >= word_.bits)
                add(fmt::format("`{}` has bit {}, but a word ends with bit {}", name,
                                bits->highest(), word_.bits - 1),
                    "Name bits of the word.");
        if ((word_.address.mask() & word_.data.mask()) != 0)
            add("address and data lie on the same bits", "Part them.");
        if ((word_.statusOfRead.mask() & word_.data.mask()) != 0)
            add("`of_read` of the status has bits of the data", "Part them.");
        if (word_.packed && (word_.bits % byteBits != 0 || word_.bits > frameBits))
            add(fmt::format("words of {} bits cannot be packed", word_.bits),
                "Packed words have 8, 16, 24, 32 or 40 bits.");
        const int shown = word_.bits - word_.statusFirst;
        if (!word_.status.captions.empty() && word_.status.width() != shown)
            add(fmt::format("the status row has {} captions for {} bits", word_.status.width(),
                            shown),
                "Give one for each bit of an answer, from `first_bit` on.");
    }

    void checkConstants() const {
        const std::uint64_t taken = word_.address.mask() | word_.data.mask() | check_.place.mask();
        for (const auto& [name, constant] :
             {std::pair("write", word_.write), std::pair("read", word_.read),
              std::pair("flags", word_.flags.value_or(0))}) {
            checkFits(word_.at, constant, fmt::format("`{}`", name).c_str());
            if ((constant & taken) != 0)
                add(fmt::format("`{}` has bits of the address, the data or the check", name),
                    "Use only bits that distinguish operations.");
        }
        checkFits(word_.at, word_.fetch.value_or(0), "`fetch`");
    }

    void checkCheck() const {
        const bool isCrc = check_.kind == WordCheck::Kind::Crc;
        if (check_.over.empty() || check_.place.empty())
            addToCheck("a check wants `over` and `place`",
                       "Say which bits it covers and where it is placed.");
        else if (!isCrc && check_.place.size() != 1)
            addToCheck("parity takes one bit", "Name one bit as its `place`.");
        if ((check_.over.mask() & check_.place.mask()) != 0)
            addToCheck("the check covers itself", "Leave its `place` out of `over`.");
        if (((check_.over.mask() | check_.place.mask()) & ~word_.mask()) != 0)
            addToCheck("the check has bits beyond the word", "Name bits of the word.");
        if ((check_.place.mask() & (word_.address.mask() | word_.data.mask())) != 0)
            addToCheck("the check shares bits with the address or the data",
                       "Give it bits of its own.");
        if (isCrc &&
            (check_.polynomial == 0 || check_.polynomial > check_.place.largest() ||
             check_.start > check_.place.largest() || check_.invert > check_.place.largest()))
            addToCheck(
                "the CRC's numbers do not fit its place",
                "Give the polynomial without its highest term, in as many bits as the place has.");
    }

    void checkFits(const Place& at, std::uint64_t word, const char* what) const {
        if ((word & ~word_.mask()) != 0)
            found_.add(at, fmt::format("{} has more than {} bits", what, word_.bits),
                       "Leave out what no word carries.");
    }

    void add(std::string text, std::string advice) const {
        found_.add(word_.at, std::move(text), std::move(advice));
    }
    void addToCheck(std::string text, std::string advice) const {
        found_.add(check_.at, std::move(text), std::move(advice));
    }

    const Findings& found_;
    const WordFormat& word_;
    const WordCheck& check_;
};

} // namespace

void checkWords(const Findings& found) {
    WordsCheck(found).run();
}

} // namespace bitlux::chips
