#include "mapimport/titles.h"

#include "chips/control_census.h"
#include "chips/register_reader.h"
#include "platform/code_page.h"
#include "platform/failure.h"
#include "platform/printable.h"

#include <algorithm>
#include <array>

#include <fmt/format.h>

namespace bitlux::mapimport {

namespace {

constexpr std::size_t longestTitle = 80;

/// Blanks and line ends, also those that are written as "\n", as one blank each.
std::string inOneLine(std::string_view text) {
    std::string line;
    for (std::size_t i = 0; i < text.size(); ++i) {
        const bool isWritten = text[i] == '\\' && i + 1 < text.size() &&
                               (text[i + 1] == 'n' || text[i + 1] == 'r' || text[i + 1] == 't') &&
                               (i + 2 == text.size() || text[i + 2] == ' ' || text[i + 2] == '\n');
        const bool isBlank = isWritten || text[i] == ' ' || (text[i] >= '\t' && text[i] <= '\r');
        if (isWritten)
            ++i;
        if (!isBlank)
            line += text[i];
        else if (!line.empty() && line.back() != ' ')
            line += ' ';
    }
    while (line.ends_with(' '))
        line.pop_back();
    return line;
}

bool isInCodePage(const std::string& text) {
    try {
        toCodePage(text);
        return true;
    } catch (const Failure&) {
        return false;
    }
}

std::string lowerCase(std::string text) {
    for (char& c : text)
        if (c >= 'A' && c <= 'Z')
            c = static_cast<char>(c - 'A' + 'a');
    return text;
}

} // namespace

std::string cleanText(std::string_view text, std::size_t most, bool& isChanged) {
    const std::string line = inOneLine(text);
    std::string clean = printable(line, most);
    isChanged = isChanged || clean != line;
    return clean;
}

std::string cleanTitle(std::string_view name, bool& isChanged) {
    const std::string line = inOneLine(name);
    std::string clean = printable(line, longestTitle);
    std::replace(clean.begin(), clean.end(), '{', '(');
    std::replace(clean.begin(), clean.end(), '}', ')');
    if (!isInCodePage(clean))
        for (char& c : clean)
            if (static_cast<unsigned char>(c) > '~')
                c = '_';
    isChanged = isChanged || clean != line;
    return clean;
}

TitleBook::TitleBook() {
    for (const std::string& name : chips::controlsOfEveryPanel())
        taken_.insert(lowerCase(name));
}

std::string TitleBook::registerTitle(const std::string& wanted) {
    std::string title = wanted;
    for (int& number = next_.emplace(wanted, 2).first->second;; ++number) {
        const std::string stem = lowerCase(chips::identifier(title));
        const std::array names{stem + "_w", "cm_" + stem + "_w", "seq_" + stem + "_w",
                               stem + "_r", "cm_" + stem + "_r", "seq_" + stem + "_r"};
        const bool isFree =
            !stem.empty() && std::none_of(names.begin(), names.end(), [&](auto& name) {
                return taken_.find(name) != taken_.end();
            });
        if (isFree) {
            taken_.insert(names.begin(), names.end());
            return title;
        }
        title = fmt::format("{}_{}", wanted, number);
    }
}

std::string TitleBook::fieldTitle(const std::string& owner, const std::string& wanted) {
    const std::string stem = lowerCase(chips::identifier(owner)) + "_";
    std::string title = wanted;
    for (int number = 2;; ++number) {
        const std::string name = lowerCase(chips::identifier(title));
        if (!name.empty() && taken_.insert(stem + name).second)
            return title;
        title = fmt::format("{}_{}", wanted, number);
    }
}

} // namespace bitlux::mapimport
