#pragma once

#include "platform/linux/os_descriptors.h"

#include <algorithm>
#include <string>
#include <string_view>

namespace bitlux::test {

using namespace std::string_literals;

inline constexpr std::string_view dongleClass = "{4B322AC1-ECA3-46d6-8783-4640FE49B4B3}";

/// A number with its low byte first.
inline std::string number(std::size_t value, int size) {
    std::string bytes;
    for (int i = 0; i < size; ++i)
        bytes += static_cast<char>(value >> 8 * i & 0xFF);
    return bytes;
}

/// UTF-16.
inline std::string wide(std::string_view text) {
    std::string bytes;
    for (const char c : text)
        bytes += {c, '\0'};
    return bytes;
}

/// A registry value; texts bring their zeros.
struct Property {
    std::string name;
    std::string value;
    std::size_t type = 1;
};

inline const Property one{"DeviceInterfaceGUID\0"s, std::string(dongleClass) + '\0'};

inline std::string version1(const std::string& property, std::size_t count = 1) {
    return number(10 + property.size(), 4) + "\0\1\5\0"s + number(count, 2) + property;
}

inline std::string property1(const Property& p) {
    const std::string name = wide(p.name);
    const std::string value = wide(p.value);
    return number(14 + name.size() + value.size(), 4) + number(p.type, 4) + number(name.size(), 2) +
           name + number(value.size(), 4) + value;
}

inline std::string version2(const std::string& descriptors) {
    return "\x0A\0\0\0\0\0\x03\x06"s + number(10 + descriptors.size(), 2) + descriptors;
}

inline std::string property2(const Property& p) {
    const std::string name = wide(p.name);
    const std::string value = wide(p.value);
    return number(10 + name.size() + value.size(), 2) + "\4\0"s + number(p.type, 2) +
           number(name.size(), 2) + name + number(value.size(), 2) + value;
}

/// What a device answers that has Microsoft OS descriptors; empty for what it refuses.
struct OsAnswers {
    std::string osString = "\x12\3M\0S\0F\0T\0\x31\0\x30\0\x30\0\x20\0"s;
    std::string properties;
    std::string capabilities =
        "\5\x0F\x28\0\2"
        "\7\x10\2\2\0\0\0"
        "\x1C\x10\5\0\xDF\x60\xDD\xD8\x89\x45\xC7\x4C\x9C\xD2\x65\x9D\x9E\x64\x8A\x9F"
        "\0\0\3\6\0\0\x21\0"s;
    std::string set;

    [[nodiscard]] const std::string& to(const ControlQuestion& question) const;
    [[nodiscard]] AskDevice ask() const {
        return
            [*this](const ControlQuestion& question) -> std::optional<std::vector<std::uint8_t>> {
                const std::string& whole = to(question);
                if (whole.empty())
                    return std::nullopt;
                const auto length = std::min<std::size_t>(whole.size(), question.length);
                return std::vector<std::uint8_t>(
                    whole.begin(), whole.begin() + static_cast<std::ptrdiff_t>(length));
            };
    }
};

inline const std::string& OsAnswers::to(const ControlQuestion& question) const {
    static const std::string refused;
    const auto is = [&](int type, int request, int value, int index) {
        return question.type == type && question.request == request && question.value == value &&
               question.index == index;
    };
    if (is(0x80, 6, 0x03EE, 0))
        return osString;
    if (is(0xC1, 0x20, 0, 5))
        return properties;
    if (is(0x80, 6, 0x0F00, 0))
        return capabilities;
    return is(0xC0, 0x21, 0, 7) ? set : refused;
}

} // namespace bitlux::test
