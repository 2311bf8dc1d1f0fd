#include "registers/names.h"

#include "platform/forms/near_names.h"
#include "platform/printable.h"

#include <fmt/format.h>
#include <fmt/ranges.h>

namespace bitlux {

std::string comparedName(std::string_view name) {
    std::string compared;
    bool isApart = false;
    for (const char c : name) {
        if (c == ' ' || c == '_') {
            isApart = !compared.empty();
            continue;
        }
        if (isApart)
            compared += ' ';
        isApart = false;
        compared += c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
    }
    return compared;
}

bool isSameName(std::string_view one, std::string_view other) {
    return comparedName(one) == comparedName(other);
}

Failure unknownName(std::string_view kind, std::string_view wanted,
                    const std::vector<std::string>& names) {
    constexpr std::size_t longest = 80;
    std::string text = fmt::format("There is no {} \"{}\"", kind, printable(wanted, longest));
    std::vector<std::string> near = forms::nearNames(wanted, names);
    for (std::string& name : near)
        name = printable(name, longest);
    if (!near.empty())
        text += fmt::format(". Did you mean {}?", fmt::join(near, ", "));
    return {Failure::Kind::OutOfRange, text};
}

} // namespace bitlux
