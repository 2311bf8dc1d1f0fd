#include "panels/common/field_text.h"

#include <algorithm>
#include <functional>
#include <vector>

#include <fmt/format.h>
#include <fmt/ranges.h>

namespace bitlux {

namespace {

std::string bitsText(int lowBit, int width) {
    return width == 1 ? fmt::format("[{}]", lowBit)
                      : fmt::format("[{}:{}]", lowBit + width - 1, lowBit);
}

std::string_view trimmed(std::string_view text) {
    const std::size_t last = text.find_last_not_of(' ');
    return text.substr(0, last == std::string_view::npos ? 0 : last + 1);
}

} // namespace

std::string fieldTitle(const oldchips::OptionField& field) {
    return fmt::format("{} {}", field.title, bitsText(field.lowBit, field.width));
}

std::string fieldTitle(const oldchips::ComboField& field) {
    std::vector<int> bits(field.bitOfIndexBit.begin(), field.bitOfIndexBit.end());
    std::sort(bits.begin(), bits.end(), std::greater());
    const int width = static_cast<int>(bits.size());
    const bool together = bits.front() - bits.back() == width - 1;
    return fmt::format("{} {}", trimmed(field.prompt),
                       together ? bitsText(bits.back(), width)
                                : fmt::format("[{}]", fmt::join(bits, ",")));
}

std::string choiceText(const oldchips::OptionField& field, int value) {
    return fmt::format("{} = {:0{}b}", bitsText(field.lowBit, field.width), value, field.width);
}

std::string choiceText(const oldchips::CheckBit& check) {
    return bitsText(check.bit, 1);
}

} // namespace bitlux
