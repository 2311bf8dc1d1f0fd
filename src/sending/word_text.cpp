#include "sending/word_text.h"

#include "platform/conversions.h"

#include <algorithm>
#include <vector>

#include <fmt/format.h>

namespace bitlux {

namespace {

template <typename Digit>
std::string binaryText(WordBits bits, Digit digit) {
    std::string text;
    text.reserve(bits.size() + bits.size() / 8);
    for (std::size_t i = bits.size(); i-- > 0;) {
        text += digit(bits[i]);
        if (i % 8 == 0 && i > 0 && i <= 40)
            text += ' ';
    }
    return text;
}

} // namespace

std::string binaryTextSent(WordBits bits) {
    return binaryText(bits, [](std::int16_t element) { return fmt::format("{}", element); });
}

std::string binaryTextReceived(WordBits bits) {
    return binaryText(bits, [](std::int16_t element) {
        return element == 0 ? '0' : element == 1 ? '1' : 'x';
    });
}

std::string hexText(WordBits bits) {
    std::vector<std::string> digits;
    for (std::size_t i = 0; i < bits.size(); i += 4) {
        int sum = 0;
        for (std::size_t k = 0; k < 4 && i + k < bits.size(); ++k)
            sum += bits[i + k] * (1 << k);
        digits.push_back(hex(static_cast<std::uint16_t>(sum)));
    }
    std::string text;
    for (std::size_t i = digits.size(); i-- > 0;)
        text += digits[i];
    return text;
}

} // namespace bitlux
