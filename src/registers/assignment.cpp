#include "registers/assignment.h"

#include "platform/failure.h"
#include "platform/printable.h"

#include <algorithm>

#include <fmt/format.h>

namespace bitlux {

namespace {

Failure noAssignment(std::string_view text, const char* why) {
    constexpr std::size_t longest = 200;
    return {Failure::Kind::Conversion, fmt::format("{}: {}", printable(text, longest), why)};
}

/// Adds `FIELD=VALUE` when the register has a field that ends at one of the equals signs.
bool addField(std::string_view text, const RegisterItem& item,
              std::vector<Assignment>& assignments) {
    for (auto equals = text.find('='); equals != std::string_view::npos;
         equals = text.find('=', equals + 1)) {
        const std::string_view field = text.substr(0, equals);
        if (!item.hasField(field))
            continue;
        assignmentOf(assignments, item).fields.emplace_back(field, text.substr(equals + 1));
        return true;
    }
    return false;
}

bool addRegister(const RegisterCatalog& catalog, std::string_view text,
                 std::vector<Assignment>& assignments) {
    for (auto equals = text.find('='); equals != std::string_view::npos;
         equals = text.find('=', equals + 1)) {
        const RegisterItem* item = catalog.find(text.substr(0, equals));
        if (item == nullptr)
            continue;
        const std::optional<std::uint64_t> value = wholeNumber(text.substr(equals + 1));
        if (!value)
            throw noAssignment(text, "A whole register takes a number.");
        assignmentOf(assignments, *item).whole = value;
        return true;
    }
    return false;
}

bool addFieldOfRegister(const RegisterCatalog& catalog, std::string_view text,
                        std::vector<Assignment>& assignments) {
    for (auto dot = text.find('.'); dot != std::string_view::npos; dot = text.find('.', dot + 1))
        if (const RegisterItem* item = catalog.find(text.substr(0, dot));
            item != nullptr && addField(text.substr(dot + 1), *item, assignments))
            return true;
    return false;
}

} // namespace

std::string Assignment::unmetIn(std::uint64_t value) const {
    if (whole && *whole != value)
        return fmt::format("0x{}, not 0x{}", item->hexOf(value), item->hexOf(*whole));
    std::string unmet;
    for (const auto& [name, text] : fields) {
        const NamedField& field = item->field(name, value);
        const std::uint64_t wanted = field.codeFrom(text);
        const std::uint64_t found = field.bits.taken(value);
        if (found != wanted)
            unmet += fmt::format("{}{} = {}, not {}", unmet.empty() ? "" : "; ", field.name,
                                 field.shortTextOf(found), field.shortTextOf(wanted));
    }
    return unmet;
}

Assignment& assignmentOf(std::vector<Assignment>& assignments, const RegisterItem& item) {
    const auto found = std::find_if(assignments.begin(), assignments.end(),
                                    [&item](const Assignment& any) { return any.item == &item; });
    return found != assignments.end() ? *found
                                      : assignments.emplace_back(Assignment{&item, {}, {}});
}

void addAssignment(const RegisterCatalog& catalog, std::string_view text,
                   std::vector<Assignment>& assignments, const RegisterItem* usual) {
    const auto equals = text.find('=');
    if (equals == std::string_view::npos)
        throw noAssignment(text, "This is neither REGISTER.FIELD=VALUE nor REGISTER=VALUE.");
    if ((usual != nullptr && addField(text, *usual, assignments)) ||
        addRegister(catalog, text, assignments) || addFieldOfRegister(catalog, text, assignments))
        return;
    const auto dot = text.find('.');
    const bool hasRegister = dot < equals;
    if (!hasRegister && usual != nullptr)
        static_cast<void>(usual->field(text.substr(0, equals), 0)); // raises
    const RegisterItem& item = catalog.item(text.substr(0, std::min(dot, equals)));
    static_cast<void>(item.field(text.substr(dot + 1, equals - dot - 1), 0)); // raises
}

} // namespace bitlux
