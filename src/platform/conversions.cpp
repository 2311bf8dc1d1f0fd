#include "platform/conversions.h"

#include "platform/failure.h"

#include <cctype>
#include <charconv>
#include <cmath>
#include <limits>
#include <locale>
#include <optional>
#include <sstream>

#include <fmt/format.h>

namespace bitlux {

namespace {

std::string withoutBlanks(std::string_view text) {
    std::string result;
    for (const char c : text)
        if (c != ' ' && c != '\t' && c != '\n' && c != '\r')
            result += c;
    return result;
}

double parseInteger(std::string_view digits, int base) {
    std::uint64_t value = 0; // takes no sign
    const auto [end, error] =
        std::from_chars(digits.data(), digits.data() + digits.size(), value, base);
    if (error == std::errc::result_out_of_range)
        throw Failure(Failure::Kind::Overflow, "Overflow");
    return static_cast<double>(value);
}

/// What from_chars finds out of range is too large, or so small that it counts as 0.
double outOfRange(std::string_view number) {
    std::istringstream stream{std::string(number)};
    stream.imbue(std::locale::classic());
    double value = 0;
    if (!(stream >> value))
        throw Failure(Failure::Kind::Overflow, "Overflow");
    return value;
}

/// from_chars also reads "inf" and "nan"; a number here begins with a digit or a point.
bool beginsNumber(std::string_view text) {
    const std::size_t first = !text.empty() && (text[0] == '-' || text[0] == '+') ? 1 : 0;
    return first < text.size() &&
           (std::isdigit(static_cast<unsigned char>(text[first])) != 0 || text[first] == '.');
}

/// Few digits and nothing else, which most texts of numbers are: no need for the machinery of
/// floating point.
std::optional<double> fewDigits(std::string_view text) {
    constexpr std::size_t few = 9;
    if (text.size() > few)
        return std::nullopt;
    return wholeNumber<std::uint32_t>(text);
}

/// from_chars does not accept "D" for an exponent.
void spellExponent(std::string& number) {
    const std::size_t sign = number.front() == '-' || number.front() == '+' ? 1 : 0;
    const std::size_t behindDigits = number.find_first_not_of("0123456789.", sign);
    if (behindDigits != std::string::npos && (number[behindDigits] | ' ') == 'd')
        number[behindDigits] = 'e';
}

bool isWhole(double value) {
    constexpr double exact = 1e15;
    return std::abs(value) < exact &&
           static_cast<double>(static_cast<std::int64_t>(value)) == value;
}

template <typename Integer>
Integer rounded(double value) {
    // The default mode takes ties to even.
    const double nearest = isWhole(value) ? value : std::nearbyint(value);
    if (!(nearest >= std::numeric_limits<Integer>::min() &&
          nearest <= std::numeric_limits<Integer>::max()))
        throw Failure(Failure::Kind::Overflow, "Overflow");
    return static_cast<Integer>(nearest);
}

} // namespace

double val(std::string_view text) {
    std::string compact = withoutBlanks(text);
    std::string_view rest = compact;
    if (rest.size() > 2 && rest[0] == '&') {
        const int letter = std::toupper(static_cast<unsigned char>(rest[1]));
        if (letter == 'H')
            return parseInteger(rest.substr(2), 16);
        if (letter == 'O')
            return parseInteger(rest.substr(2), 8);
    }
    if (const auto value = fewDigits(rest))
        return *value;
    if (!beginsNumber(rest))
        return 0;
    spellExponent(compact);
    if (rest[0] == '+') // from_chars takes no plus sign
        rest.remove_prefix(1);
    double value = 0;
    const auto [end, error] = std::from_chars(rest.data(), rest.data() + rest.size(), value);
    return error == std::errc::result_out_of_range ? outOfRange(rest) : value;
}

double toNumber(std::string_view text) {
    std::string_view rest = text;
    if (beginsNumber(text)) {
        if (rest[0] == '+')
            rest.remove_prefix(1);
        double value = 0;
        const auto [end, error] = std::from_chars(rest.data(), rest.data() + rest.size(), value);
        if (end == rest.data() + rest.size() && error != std::errc::invalid_argument)
            return error == std::errc::result_out_of_range ? outOfRange(rest) : value;
    }
    throw Failure(Failure::Kind::Conversion, "Type mismatch: the text is no number");
}

std::int16_t toInt16(double value) {
    return rounded<std::int16_t>(value);
}

std::int32_t toInt32(double value) {
    return rounded<std::int32_t>(value);
}

std::string hex(std::uint64_t value) {
    return fmt::format("{:X}", value);
}

} // namespace bitlux
