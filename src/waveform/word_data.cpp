#include "waveform/word_data.h"

#include "waveform/wire_levels.h"

namespace bitlux {

namespace {

void takeFromPort(const SentWord& word, WordData& data) {
    const int mask = 1 << word.pins.DOPin;
    for (std::size_t i = 0; i < word.sent().size(); ++i) {
        const bool isHigh = (word.samples()[i] & mask) == mask;
        data.sent[i] = word.sent()[i] != 0;
        data.received[i] = (isHigh ? word.levels.DOHighValue : word.levels.DOLowValue) != 0;
    }
}

void takeFromDongle(const SentWord& word, WordData& data) {
    const CommandedWord commanded(word.frame);
    data.length = commanded.length;
    data.type = commanded.type;
    for (int n = 0; n < data.length; ++n) {
        const auto bit = static_cast<std::size_t>(data.msbFirst ? data.length - 1 - n : n);
        data.sent[bit] = bitOf(word.frame, n);
        data.received[bit] = bitOf(word.answer, n);
    }
}

} // namespace

WordData::WordData(const SentWord& word)
    : length(word.length), type(word.type), msbFirst(word.msbFirst) {
    if (word.onDongle)
        takeFromDongle(word, *this);
    else
        takeFromPort(word, *this);
}

std::string WordData::hexOf(const Bits& bits) const {
    std::string text;
    for (int low = (length - 1) / 4 * 4; low >= 0; low -= 4) {
        unsigned digit = 0;
        for (int bit = low + 3; bit >= low; --bit)
            digit = digit << 1U | (bits[static_cast<std::size_t>(bit)] ? 1U : 0U);
        text += "0123456789ABCDEF"[digit];
    }
    return text;
}

std::uint64_t WordData::numberOf(const Bits& bits) {
    return (bits & Bits(~std::uint64_t{0})).to_ullong();
}

} // namespace bitlux
