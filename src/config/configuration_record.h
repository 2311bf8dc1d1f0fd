#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <variant>

namespace bitlux {

/// The value of a record: text in the code page of the file, a number, or #TRUE# or #FALSE#.
using RecordValue = std::variant<std::string_view, double, bool>;

/// A line of a configuration file: a key in quotes, a comma, a value.
struct ConfigurationRecord {
    std::string_view key;
    RecordValue value;
};

/// Splits a line; the views point into it. A text has no escape for quotes inside: it ends at the
/// last quote of the line. Anything else raises Failure (Conversion) with the reason.
ConfigurationRecord parseRecord(std::string_view line);

// Conversion of a value to the type that a record's action needs: to a text, numbers as their
// digits and truth values as "True" or "False"; from a text, a number or "True" or "False".
// Anything else raises Failure (Conversion), a number that does not fit Failure (Overflow).
std::string textOf(const RecordValue& value);
double numberOf(const RecordValue& value);
std::int16_t integerOf(const RecordValue& value);
bool booleanOf(const RecordValue& value);

} // namespace bitlux
