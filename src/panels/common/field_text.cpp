#include "panels/common/field_text.h"

#include <algorithm>

#include <fmt/format.h>

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

std::string fieldTitle(const chips::OptionField& field) {
    return fmt::format("{} {}", field.title, bitsText(field.lowBit, field.width));
}

std::string fieldTitle(const chips::ComboField& field) {
    const int lowBit = *std::min_element(field.bitOfIndexBit.begin(), field.bitOfIndexBit.end());
    return fmt::format("{} {}", trimmed(field.prompt),
                       bitsText(lowBit, static_cast<int>(field.bitOfIndexBit.size())));
}

std::string choiceText(const chips::OptionField& field, int value) {
    return fmt::format("{} = {:0{}b}", bitsText(field.lowBit, field.width), value, field.width);
}

std::string choiceText(const chips::CheckBit& check) {
    return bitsText(check.bit, 1);
}

} // namespace bitlux
