#pragma once

#include "platform/failure.h"

#include <cstdint>
#include <string>

#include <fmt/format.h>
#include <nlohmann/json.hpp>

namespace bitlux {

using Json = nlohmann::ordered_json;

// Members of an object of JSON. They raise Failure (Conversion), with a sentence without its full
// stop, for a member that is missing or of another kind.

[[noreturn]] inline void refuseMember(const char* name, const char* why) {
    throw Failure(Failure::Kind::Conversion, fmt::format("\"{}\" {}", name, why));
}

inline const Json& member(const Json& object, const char* name) {
    const auto found = object.find(name);
    if (found == object.end())
        refuseMember(name, "is missing");
    return *found;
}

inline const std::string& textMember(const Json& object, const char* name) {
    const Json& value = member(object, name);
    if (!value.is_string())
        refuseMember(name, "is no text");
    return value.get_ref<const std::string&>();
}

/// A whole number within the limits.
inline std::int64_t numberMember(const Json& object, const char* name, std::int64_t least,
                                 std::int64_t most) {
    const Json& value = member(object, name);
    if (!value.is_number_integer())
        refuseMember(name, "is no whole number");
    const auto number = value.get<std::int64_t>();
    if (number < least || number > most)
        refuseMember(name, "is out of range");
    return number;
}

/// True for one text, false for another.
inline bool choiceMember(const Json& object, const char* name, const char* yes, const char* no) {
    const std::string& text = textMember(object, name);
    if (text != yes && text != no)
        throw Failure(Failure::Kind::Conversion,
                      fmt::format(R"("{}" is neither "{}" nor "{}")", name, yes, no));
    return text == yes;
}

} // namespace bitlux
