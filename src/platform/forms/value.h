#pragma once

#include <concepts>
#include <cstdint>
#include <limits>
#include <string>
#include <string_view>
#include <type_traits>
#include <utility>
#include <variant>
#include <vector>

namespace bitlux::forms {

/// An argument, a result or a variable of a form that is accessed by name.
using Value = std::variant<std::monostate, bool, std::int64_t, double, std::string>;
using Values = std::vector<Value>;

/// Of one of these kinds; the only conversion is from a whole number to a floating one. All raise
/// Failure: Conversion for another kind, Overflow for a number beyond the limits.
[[nodiscard]] bool truthIn(const Value& value);
[[nodiscard]] std::int64_t wholeNumberIn(const Value& value, std::int64_t least,
                                         std::int64_t greatest);
[[nodiscard]] double numberIn(const Value& value);
[[nodiscard]] const std::string& textIn(const Value& value);

/// A whole number that is no truth value; an enumeration counts as its number.
template <typename T>
concept WholeNumber = (std::integral<T> && !std::same_as<T, bool>) || std::is_enum_v<T>;

template <typename T>
T valueAs(const Value& value) {
    if constexpr (std::same_as<T, Value>) {
        return value;
    } else if constexpr (std::same_as<T, bool>) {
        return truthIn(value);
    } else if constexpr (std::is_enum_v<T>) {
        return static_cast<T>(valueAs<std::underlying_type_t<T>>(value));
    } else if constexpr (std::integral<T>) {
        using Limits = std::numeric_limits<T>;
        constexpr bool wide = sizeof(T) == sizeof(std::int64_t);
        return static_cast<T>(wholeNumberIn(value,
                                            wide ? std::numeric_limits<std::int64_t>::min()
                                                 : static_cast<std::int64_t>(Limits::min()),
                                            wide ? std::numeric_limits<std::int64_t>::max()
                                                 : static_cast<std::int64_t>(Limits::max())));
    } else if constexpr (std::floating_point<T>) {
        return static_cast<T>(numberIn(value));
    } else {
        return T(textIn(value));
    }
}

template <typename T>
Value toValue(const T& thing) {
    if constexpr (std::same_as<T, Value> || std::same_as<T, bool> || std::same_as<T, double>)
        return thing;
    else if constexpr (WholeNumber<T>)
        return static_cast<std::int64_t>(thing);
    else if constexpr (std::floating_point<T>)
        return static_cast<double>(thing);
    else
        return std::string(thing);
}

} // namespace bitlux::forms
