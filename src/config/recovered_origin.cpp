#include "config/recovered_origin.h"

#include "config/configuration_record.h"
#include "platform/failure.h"

#include <algorithm>
#include <fstream>
#include <variant>

#include <fmt/format.h>

namespace bitlux {

std::string escapedName(std::string_view fileName) {
    std::string text;
    for (const char c : fileName)
        if (c <= ' ' || c > '~' || c == '%' || c == '"')
            text += fmt::format("%{:02X}", static_cast<unsigned char>(c));
        else
            text += c;
    return text;
}

std::string unescapedName(std::string_view text) {
    constexpr std::string_view digits = "0123456789ABCDEF";
    std::string name;
    for (std::size_t i = 0; i < text.size(); ++i) {
        const bool escapes = text[i] == '%' && i + 2 < text.size();
        const std::size_t high = escapes ? digits.find(text[i + 1]) : std::string_view::npos;
        const std::size_t low = escapes ? digits.find(text[i + 2]) : std::string_view::npos;
        if (high == std::string_view::npos || low == std::string_view::npos) {
            name += text[i];
            continue;
        }
        name += static_cast<char>(high * digits.size() + low);
        i += 2;
    }
    return name;
}

std::string originIn(const std::string& fileName) {
    constexpr std::streamoff longestRecord = 16384;
    std::ifstream file(fileName, std::ios::binary | std::ios::ate);
    const std::streamoff size = file.tellg();
    const std::streamoff length = std::clamp<std::streamoff>(size, 0, longestRecord);
    std::string end(static_cast<std::size_t>(length), '\0');
    file.seekg(size - length);
    if (!file.read(end.data(), length) || !end.ends_with("\r\n"))
        return {};
    end.resize(end.size() - 2);
    try {
        const ConfigurationRecord record =
            parseRecord(std::string_view(end).substr(end.rfind('\n') + 1));
        const auto* text = std::get_if<std::string_view>(&record.value);
        return record.key == recoveredFromKey && text != nullptr ? unescapedName(*text) : "";
    } catch (const Failure&) { // its content was changed
        return {};
    }
}

} // namespace bitlux
