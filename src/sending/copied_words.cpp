#include "sending/copied_words.h"

#include <algorithm>
#include <string_view>

#include <fmt/format.h>
#include <fmt/ranges.h>

namespace bitlux {

namespace {

using Words = std::vector<CopiedWord>;

constexpr std::size_t longestLine = 100;

bool isAlike(const CopiedWord& one, const CopiedWord& other) {
    return one.bits == other.bits && one.type == other.type && one.msbFirst == other.msbFirst;
}

std::vector<Words> groupsOf(const Words& words) {
    std::vector<Words> groups;
    for (const CopiedWord& word : words)
        if (!groups.empty() && isAlike(groups.back().front(), word))
            groups.back().push_back(word);
        else
            groups.push_back({word});
    return groups;
}

/// On one line, or on as many as it takes, indented.
std::string listed(const std::vector<std::string>& items, std::size_t around) {
    std::string line = fmt::format("{}", fmt::join(items, ", "));
    if (line.size() + around <= longestLine)
        return line;
    constexpr std::string_view indent = "\n    ";
    std::string text;
    std::size_t left = 0;
    for (const std::string& item : items) {
        if (left < item.size() + 2) {
            text += indent;
            left = longestLine - indent.size();
        } else {
            text += ' ';
        }
        text += item + ',';
        left -= std::min(left, item.size() + 2);
    }
    return text + '\n';
}

std::vector<std::string> numbersOf(const Words& words) {
    std::vector<std::string> numbers;
    for (const CopiedWord& word : words)
        numbers.push_back("0x" + word.digits);
    return numbers;
}

std::string quoted(const std::string& argument) {
    const bool isPlain = std::all_of(argument.begin(), argument.end(), [](char c) {
        return (c >= '0' && c <= '9') || (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z') ||
               std::string_view("-_.,:/+@%").find(c) != std::string_view::npos;
    });
    if (isPlain && !argument.empty())
        return argument;
    std::string text = "'";
    for (const char c : argument)
        text += c == '\'' ? std::string("'\\''") : std::string(1, c);
    return text + '\'';
}

std::string bytesOf(const CopiedWord& word) {
    const std::string digits = (word.digits.size() % 2 == 1 ? "0" : "") + word.digits;
    std::vector<std::string> bytes;
    for (std::size_t i = 0; i < digits.size(); i += 2)
        bytes.push_back("0x" + digits.substr(i, 2));
    return fmt::format("{{{}}}", fmt::join(bytes, ", "));
}

} // namespace

std::string pythonText(const Words& words) {
    std::string text;
    for (const Words& group : groupsOf(words)) {
        const CopiedWord& shape = group.front();
        const bool isOne = group.size() == 1;
        const std::string head = isOne ? "b.transfer(" : "b.transfer_many([";
        const std::string tail =
            fmt::format("{}, bits={}, type={})\n", isOne ? "" : "]", shape.bits, shape.type);
        text +=
            fmt::format("{}{}{}", head, listed(numbersOf(group), head.size() + tail.size()), tail);
    }
    return text;
}

std::string commandLineText(const Words& words, const std::vector<std::string>& options) {
    std::string text;
    for (const Words& group : groupsOf(words)) {
        const CopiedWord& shape = group.front();
        text += fmt::format("bitlux send --bits {} --type {}", shape.bits, shape.type);
        if (!shape.msbFirst)
            text += " --order lsb";
        for (const std::string& option : options)
            text += ' ' + quoted(option);
        for (const CopiedWord& word : group)
            text += ' ' + word.digits;
        text += '\n';
    }
    return text;
}

std::string cBytesText(const Words& words) {
    std::string text;
    int number = 0;
    for (const Words& group : groupsOf(words)) {
        const CopiedWord& shape = group.front();
        const int bytes = (shape.bits + 7) / 8;
        const std::string name = ++number == 1 ? "words" : fmt::format("words_{}", number);
        std::vector<std::string> items;
        for (const CopiedWord& word : group)
            items.push_back(bytesOf(word));
        const std::string head = fmt::format("static const uint8_t {}[][{}] = {{", name, bytes);
        text += fmt::format("/* {} bits a word{}, SPI type {}, most significant byte first{} */\n",
                            shape.bits, shape.bits % 8 == 0 ? "" : " in the low bits of its bytes",
                            shape.type, shape.msbFirst ? "" : "; on the wire bit 0 goes first");
        text += head + listed(items, head.size() + 2) + "};\n";
    }
    return text;
}

} // namespace bitlux
