#include "platform/forms/value.h"

#include "platform/failure.h"

#include <array>

#include <fmt/format.h>

namespace bitlux::forms {

namespace {

[[noreturn]] void failConversion(const Value& value, std::string_view wanted) {
    constexpr std::array kinds{"nothing", "a truth value", "a whole number", "a number", "a text"};
    throw Failure(Failure::Kind::Conversion,
                  fmt::format("{} is wanted, not {}", wanted, kinds.at(value.index())));
}

} // namespace

bool truthIn(const Value& value) {
    if (const auto* truth = std::get_if<bool>(&value))
        return *truth;
    failConversion(value, "A truth value");
}

std::int64_t wholeNumberIn(const Value& value, std::int64_t least, std::int64_t greatest) {
    const auto* number = std::get_if<std::int64_t>(&value);
    if (number == nullptr)
        failConversion(value, "A whole number");
    if (*number < least || *number > greatest)
        throw Failure(Failure::Kind::Overflow, fmt::format("Overflow: {} is not between {} and {}",
                                                           *number, least, greatest));
    return *number;
}

double numberIn(const Value& value) {
    if (const auto* number = std::get_if<double>(&value))
        return *number;
    if (const auto* whole = std::get_if<std::int64_t>(&value))
        return static_cast<double>(*whole);
    failConversion(value, "A number");
}

const std::string& textIn(const Value& value) {
    if (const auto* text = std::get_if<std::string>(&value))
        return *text;
    failConversion(value, "A text");
}

} // namespace bitlux::forms
