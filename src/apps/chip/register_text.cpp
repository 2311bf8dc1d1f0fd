#include "apps/chip/register_text.h"

#include "apps/json_text.h"
#include "platform/printable.h"

#include <string_view>

#include <fmt/format.h>

namespace bitlux {

namespace {

constexpr std::size_t longestText = 1000;

std::string shownValue(const NamedField& field, std::uint64_t code) {
    const std::string_view text = field.textOf(code);
    std::string shown = field.bits.size() > 3 ? fmt::format("0x{:X}", code) : std::to_string(code);
    if (!text.empty())
        shown += "  " + printable(text, longestText);
    return shown;
}

std::string fieldHead(const NamedField& field) {
    return fmt::format("    {:<12} {}", "[" + field.bits.text() + "]",
                       printable(field.name, longestText));
}

std::string fieldMember(const NamedField& field, std::uint64_t code) {
    const std::string_view text = field.textOf(code);
    return fmt::format(R"({{"name":{},"bits":"{}","value":{}{}}})", jsonString(field.name),
                       field.bits.text(), code,
                       text.empty() ? "" : R"(,"text":)" + jsonString(text));
}

} // namespace

std::string valueLines(const RegisterItem& item, std::uint64_t value) {
    std::string text =
        fmt::format("{} = 0x{}", printable(item.name, longestText), item.hexOf(value));
    for (const NamedField& any : item.fields)
        if (any.appliesTo(value))
            text +=
                fmt::format("\n{} = {}", fieldHead(any), shownValue(any, any.bits.taken(value)));
    return text;
}

std::string changeLines(const RegisterItem& item, std::uint64_t before, std::uint64_t after) {
    std::string text = fmt::format("{} 0x{} -> 0x{}", printable(item.name, longestText),
                                   item.hexOf(before), item.hexOf(after));
    for (const FieldDifference& any : fieldDifferences(item, before, after))
        text += fmt::format("\n{}: {} -> {}", fieldHead(*any.field),
                            shownValue(*any.field, any.before), shownValue(*any.field, any.after));
    return text;
}

std::string valueMembers(const RegisterItem& item, std::uint64_t value) {
    std::string fields;
    for (const NamedField& any : item.fields)
        if (any.appliesTo(value))
            fields += (fields.empty() ? "" : ",") + fieldMember(any, any.bits.taken(value));
    return fmt::format(R"("name":{},"value":{},"hex":"{}","fields":[{}])", jsonString(item.name),
                       value, item.hexOf(value), fields);
}

std::string changeMembers(const SnapshotDifference& difference) {
    const auto number = [](const std::optional<std::uint64_t>& value) {
        return value ? std::to_string(*value) : "null";
    };
    std::string fields;
    if (difference.before && difference.after)
        for (const FieldDifference& any :
             fieldDifferences(*difference.item, *difference.before, *difference.after))
            fields += fmt::format(R"({}{{"name":{},"bits":"{}","before":{},"after":{}}})",
                                  fields.empty() ? "" : ",", jsonString(any.field->name),
                                  any.field->bits.text(), any.before, any.after);
    return fmt::format(R"("name":{},"before":{},"after":{},"fields":[{}])",
                       jsonString(difference.item->name), number(difference.before),
                       number(difference.after), fields);
}

} // namespace bitlux
