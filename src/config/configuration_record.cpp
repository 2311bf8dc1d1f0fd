#include "config/configuration_record.h"

#include "platform/code_page.h"
#include "platform/conversions.h"
#include "platform/failure.h"
#include "platform/letters.h"
#include "platform/printable.h"

#include <fmt/format.h>

namespace bitlux {

namespace {

[[noreturn]] void fail(const std::string& reason) {
    throw Failure(Failure::Kind::Conversion, reason);
}

std::string_view trimmed(std::string_view text) {
    const std::size_t first = text.find_first_not_of(" \t");
    if (first == std::string_view::npos)
        return {};
    return text.substr(first, text.find_last_not_of(" \t") - first + 1);
}

std::string_view withoutQuotes(std::string_view text) {
    if (text.size() < 2 || text.back() != '"')
        fail("the text has no closing quote");
    return text.substr(1, text.size() - 2);
}

/// Part of what a file holds, for a message.
std::string quoted(std::string_view text) {
    constexpr std::size_t most = 40;
    return fmt::format("\"{}\"", printable(toUtf8(text), most));
}

/// The number in the text; `kind` names the other kinds that are allowed.
double numberIn(std::string_view text, const char* kind) {
    try {
        return toNumber(text);
    } catch (const Failure& failure) {
        throw Failure(failure.kind(), fmt::format("{} is no {}", quoted(text), kind));
    }
}

RecordValue parseValue(std::string_view text) {
    if (text.empty())
        fail("the value is missing");
    if (text.front() == '"')
        return withoutQuotes(text);
    if (text == "#TRUE#" || text == "#FALSE#")
        return text == "#TRUE#";
    return numberIn(text, "text in quotes, number, #TRUE# or #FALSE#");
}

} // namespace

ConfigurationRecord parseRecord(std::string_view line) {
    line = trimmed(line);
    if (line.find('\0') != std::string_view::npos)
        fail("the line holds a NUL character");
    const std::size_t end = line.find('"', 1);
    if (line.empty() || line.front() != '"' || end == std::string_view::npos)
        fail("the line does not begin with a key in quotes");
    const std::string_view rest = trimmed(line.substr(end + 1));
    if (rest.empty() || rest.front() != ',')
        fail("there is no comma behind the key");
    return {.key = line.substr(1, end - 1), .value = parseValue(trimmed(rest.substr(1)))};
}

std::string textOf(const RecordValue& value) {
    if (const auto* text = std::get_if<std::string_view>(&value))
        return toUtf8(*text);
    if (const auto* number = std::get_if<double>(&value))
        return fmt::format("{}", *number);
    return std::get<bool>(value) ? "True" : "False";
}

double numberOf(const RecordValue& value) {
    if (const auto* number = std::get_if<double>(&value))
        return *number;
    if (const auto* truth = std::get_if<bool>(&value))
        return *truth ? -1 : 0;
    return numberIn(std::get<std::string_view>(value), "number");
}

std::int16_t integerOf(const RecordValue& value) {
    return toInt16(numberOf(value));
}

bool booleanOf(const RecordValue& value) {
    if (const auto* text = std::get_if<std::string_view>(&value)) {
        if (equalIgnoringCase(*text, "true"))
            return true;
        if (equalIgnoringCase(*text, "false"))
            return false;
    }
    if (const auto* truth = std::get_if<bool>(&value))
        return *truth;
    return numberOf(value) != 0;
}

} // namespace bitlux
