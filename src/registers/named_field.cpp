#include "registers/named_field.h"

#include "platform/printable.h"
#include "registers/names.h"

#include <algorithm>
#include <charconv>

#include <fmt/format.h>
#include <fmt/ranges.h>

namespace bitlux {

namespace {

using chips::Choice;
using chips::ControlName;
using chips::Field;
using chips::Register;

std::vector<std::string> textsOf(const std::vector<Choice>& choices) {
    std::vector<std::string> texts;
    for (const Choice& any : choices)
        texts.push_back(any.text);
    return texts;
}

/// The choice that an option selects; null when the field has no such option.
const Choice* choiceOf(const Field& field, const ControlName& option) {
    if (field.control.name != option.name)
        return nullptr;
    if (field.kind == Field::Kind::Box)
        return field.control.index == option.index ? &field.choices.front() : nullptr;
    const int place = std::max(option.index, 0) - std::max(field.control.index, 0);
    return place >= 0 && place < static_cast<int>(field.choices.size())
               ? &field.choices[static_cast<std::size_t>(place)]
               : nullptr;
}

/// What the option of another field of the same register means for its bits.
std::optional<NamedField::Condition> conditionOf(const Register& owner, const Field& field) {
    if (!field.when.exists())
        return std::nullopt;
    for (const Field& other : owner.fields)
        if (const Choice* choice = choiceOf(other, field.when.control))
            return NamedField::Condition{other.bits, choice->code};
    return std::nullopt;
}

void sortFromTheTop(std::vector<NamedField>& fields) {
    std::stable_sort(fields.begin(), fields.end(), [](const NamedField& a, const NamedField& b) {
        return a.bits.highest() > b.bits.highest();
    });
}

std::vector<NamedField> describedFieldsOf(const Register& of) {
    std::vector<NamedField> fields;
    for (const Field& any : of.fields)
        fields.push_back({.name = any.title,
                          .bits = any.bits,
                          .choices = any.choices,
                          .condition = conditionOf(of, any)});
    return fields;
}

} // namespace

std::string_view NamedField::textOf(std::uint64_t code) const {
    const auto found = std::find_if(choices.begin(), choices.end(),
                                    [code](const Choice& any) { return any.code == code; });
    return found == choices.end() || found->text == name ? std::string_view{} : found->text;
}

std::string NamedField::shown(std::uint64_t code) const {
    const std::string_view text = textOf(code);
    if (!text.empty())
        return std::string(text);
    constexpr std::uint64_t lastDigit = 9;
    return code <= lastDigit ? std::to_string(code) : fmt::format("0x{:X}", code);
}

std::string NamedField::shortTextOf(std::uint64_t code) const {
    std::string text = shown(code);
    const std::size_t colon = text.find(": ");
    if (colon != std::string::npos) {
        std::string head = text.substr(0, colon);
        const auto beginning =
            std::count_if(choices.begin(), choices.end(),
                          [&head](const Choice& any) { return any.text.starts_with(head); });
        if (beginning == 1)
            return head;
    }
    if (text.ends_with('.') && !text.ends_with(".."))
        text.pop_back();
    return text;
}

std::uint64_t NamedField::codeFrom(std::string_view text) const {
    constexpr std::size_t longest = 80;
    const std::optional<std::uint64_t> number = wholeNumber(text);
    const auto choice = std::find_if(choices.begin(), choices.end(), [text](const Choice& any) {
        return isSameName(any.text, text);
    });
    const bool isPlain = number && std::to_string(*number) == text;
    if (isPlain && choice != choices.end() && choice->code != *number)
        throw Failure(
            Failure::Kind::Conversion,
            fmt::format("\"{}\" is a value of {} and the text of the value {}: write 0x{:X} "
                        "or 0x{:X}",
                        text, name, choice->code, *number, choice->code));
    if (number) {
        if (*number > bits.largest())
            throw Failure(Failure::Kind::OutOfRange,
                          fmt::format("{} does not fit: {} has {} bits, at most 0x{:X}",
                                      printable(text, longest), name, bits.size(), bits.largest()));
        return *number;
    }
    if (choice != choices.end())
        return choice->code;
    if (choices.empty())
        throw Failure(Failure::Kind::Conversion,
                      fmt::format("{} takes a number, not \"{}\"", name, printable(text, longest)));
    throw unknownName("value of " + name, text, textsOf(choices));
}

std::optional<std::uint64_t> wholeNumber(std::string_view text) {
    constexpr int decimal = 10;
    constexpr int hexadecimal = 16;
    int base = decimal;
    if (text.starts_with("0x") || text.starts_with("0X"))
        base = hexadecimal;
    else if (text.starts_with("0b") || text.starts_with("0B"))
        base = 2;
    std::string digits(base == decimal ? text : text.substr(2));
    if (digits.empty() || digits.front() == '_' || digits.back() == '_')
        return std::nullopt;
    std::erase(digits, '_');
    std::uint64_t number = 0;
    const char* end = digits.data() + digits.size();
    const auto [stop, error] = std::from_chars(digits.data(), end, number, base);
    return error == std::errc{} && stop == end ? std::optional(number) : std::nullopt;
}

std::vector<NamedField> bitsOf(const std::vector<std::string>& captions, std::uint64_t covered) {
    std::vector<NamedField> fields;
    for (int bit = static_cast<int>(captions.size()) - 1; bit >= 0; --bit) {
        const std::string& caption = captions[static_cast<std::size_t>(bit)];
        const bool isNamed = caption != "-" && !caption.empty() && caption != std::to_string(bit);
        if (isNamed && (covered >> bit & 1) == 0)
            fields.push_back({.name = caption,
                              .bits = chips::BitList::range(bit, 1),
                              .choices = {},
                              .condition = {}});
    }
    return fields;
}

std::vector<NamedField> fieldsOf(const Register& of) {
    std::vector<NamedField> fields = describedFieldsOf(of);
    std::uint64_t covered = 0;
    for (const NamedField& any : fields)
        covered |= any.bits.mask();
    const std::vector<NamedField> others = bitsOf(of.row.captions, covered);
    fields.insert(fields.end(), others.begin(), others.end());
    sortFromTheTop(fields);
    return fields;
}

} // namespace bitlux
