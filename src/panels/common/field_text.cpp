#include "panels/common/field_text.h"

#include <algorithm>
#include <string_view>

#include <fmt/format.h>

namespace bitlux {

namespace {

/// Highest bit first, as in a data sheet, in any order of the field's bits.
std::string bitsText(const chips::BitList& bits) {
    std::string text;
    for (int bit = bits.highest(); bit >= 0; --bit) {
        if (!bits.has(bit))
            continue;
        const int high = bit;
        while (bit > 0 && bits.has(bit - 1))
            --bit;
        text += fmt::format("{}{}", text.empty() ? "" : ",",
                            high > bit ? fmt::format("{}:{}", high, bit) : std::to_string(bit));
    }
    return fmt::format("[{}]", text);
}

std::string_view trimmed(std::string_view text) {
    const std::size_t last = text.find_last_not_of(' ');
    return text.substr(0, last == std::string_view::npos ? 0 : last + 1);
}

} // namespace

std::string fieldTitle(const chips::Field& field) {
    return fmt::format("{} {}", trimmed(field.title), bitsText(field.bits));
}

std::string choiceText(const chips::Field& field, std::size_t choice) {
    if (field.kind == chips::Field::Kind::Box && field.bits.size() == 1)
        return bitsText(field.bits);
    return fmt::format("{} = {:0{}b}", bitsText(field.bits), field.choices.at(choice).code,
                       field.bits.size());
}

} // namespace bitlux
