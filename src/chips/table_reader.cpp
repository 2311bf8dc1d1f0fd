#include "chips/table_reader.h"

#include "platform/conversions.h"
#include "platform/forms/near_names.h"

#include <algorithm>
#include <limits>
#include <set>

#include <fmt/format.h>
#include <fmt/ranges.h>

namespace bitlux::chips {

namespace {

constexpr int decimal = 10;
constexpr int hexadecimal = 16;
constexpr unsigned char deleteCharacter = 0x7F;

std::string near(std::string_view wanted, const std::vector<std::string>& names,
                 const char* otherwise) {
    const std::vector<std::string> found = forms::nearNames(wanted, names);
    return found.empty() ? otherwise : fmt::format("Did you mean {}?", fmt::join(found, ", "));
}

std::optional<std::uint64_t> numberIn(std::string_view text) {
    const bool hex = text.starts_with("0x") || text.starts_with("0X");
    if (hex)
        text.remove_prefix(2);
    return wholeNumber<std::uint64_t>(text, hex ? hexadecimal : decimal);
}

/// "Name", "Name(3)" or "Name(4..7)".
std::optional<ControlRange> rangeIn(const std::string& text) {
    const std::size_t dots = text.find("..");
    if (dots == std::string::npos) {
        const auto name = TableReader::controlIn(text);
        return name ? std::optional(ControlRange{name->name, name->index, name->index})
                    : std::nullopt;
    }
    const auto first = TableReader::controlIn(text.substr(0, dots) + ")");
    const auto last = TableReader::controlIn("x(" + text.substr(dots + 2));
    if (!first || !last || first->index < 0 || last->index < first->index)
        return std::nullopt;
    return ControlRange{first->name, first->index, last->index};
}

bool isNameCharacter(char c) {
    return (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z') || (c >= '0' && c <= '9') || c == '_';
}

} // namespace

TableReader::TableReader(const Node& node, Problems& problems) : node_(node), problems_(problems) {
    constexpr std::size_t mostKeys = 32;
    asked_.reserve(mostKeys);
    if (node.table() == nullptr)
        problem(node.at, "a table is wanted here", "Write it as { key = value }.");
}

TableReader::~TableReader() {
    if (node_.table() == nullptr)
        return;
    for (const auto& [key, value] : *node_.table())
        if (std::find(asked_.begin(), asked_.end(), key) == asked_.end()) {
            const std::set<std::string_view> known(asked_.begin(), asked_.end());
            problem(value.keyAt, fmt::format("there is no key `{}` here", key),
                    near(key, {known.begin(), known.end()}, "Remove it."));
        }
}

void TableReader::problem(const Place& at, std::string text, std::string advice) {
    problems_.push_back({at, std::move(text), std::move(advice)});
}

const Node* TableReader::take(std::string_view key) {
    asked_.push_back(key);
    return node_.find(key);
}

Place TableReader::at(std::string_view key) const {
    const Node* found = node_.find(key);
    return found != nullptr ? found->at : node_.at;
}

const Node& TableReader::section(std::string_view key) {
    static const Node nothing{.at = {}, .value = Node::Table{}};
    const Node* found = take(key);
    return found != nullptr ? *found : nothing;
}

std::vector<const Node*> TableReader::elements(std::string_view key) {
    std::vector<const Node*> found;
    const Node* node = take(key);
    if (node == nullptr)
        return found;
    if (node->list() == nullptr)
        found.push_back(node);
    else
        for (const Node& element : *node->list())
            found.push_back(&element);
    return found;
}

std::vector<const Node*> TableReader::tables(std::string_view key) {
    return elements(key);
}

/// Control characters would break the rows of files, and windows do not show them.
bool TableReader::isClean(const Node& node, const std::string& text, std::string_view key) {
    const bool clean = std::none_of(text.begin(), text.end(), [](char c) {
        const auto byte = static_cast<unsigned char>(c);
        return byte < ' ' || byte == deleteCharacter;
    });
    if (!clean)
        problem(node.at, fmt::format("`{}` has a control character", key), "Leave it out.");
    return clean;
}

std::string TableReader::text(std::string_view key, std::string otherwise) {
    const Node* node = take(key);
    if (node == nullptr)
        return otherwise;
    const std::string* text = node->text();
    if (text != nullptr && isClean(*node, *text, key))
        return *text;
    if (text == nullptr)
        problem(node->at, fmt::format("`{}` is no text", key), "Put it into quotes.");
    return otherwise;
}

bool TableReader::require(std::string_view key, std::string advice) {
    if (take(key) != nullptr)
        return true;
    if (node_.table() != nullptr)
        problem(node_.at, fmt::format("`{}` is missing", key), std::move(advice));
    return false;
}

std::string TableReader::required(std::string_view key) {
    if (!require(key, "Add it to this table."))
        return {};
    std::string found = text(key, "?");
    if (found.empty())
        problem(at(key), fmt::format("`{}` is empty", key), "Say something in it.");
    return found;
}

std::vector<std::string> TableReader::texts(std::string_view key) {
    std::vector<std::string> found;
    for (const Node* element : elements(key)) {
        if (const std::string* text = element->text()) {
            if (isClean(*element, *text, key))
                found.push_back(*text);
        } else {
            problem(element->at, fmt::format("`{}` has something that is no text", key),
                    "Put each text into quotes.");
        }
    }
    return found;
}

bool TableReader::truth(std::string_view key, bool otherwise) {
    const Node* node = take(key);
    if (node == nullptr)
        return otherwise;
    if (const bool* truth = node->truth())
        return *truth;
    problem(node->at, fmt::format("`{}` is neither true nor false", key), "Write true or false.");
    return otherwise;
}

int TableReader::number(std::string_view key, int otherwise, int least, int most) {
    const Node* node = take(key);
    if (node == nullptr)
        return otherwise;
    const std::int64_t* number = node->number();
    if (number != nullptr && *number >= least && *number <= most)
        return static_cast<int>(*number);
    problem(node->at, fmt::format("`{}` is no whole number from {} to {}", key, least, most),
            "Give one in this range.");
    return otherwise;
}

std::optional<std::uint64_t> TableReader::wordIn(const Node& node, std::string_view key) {
    if (const std::int64_t* number = node.number(); number != nullptr && *number >= 0)
        return static_cast<std::uint64_t>(*number);
    if (const std::string* text = node.text())
        if (const std::optional<std::uint64_t> number = numberIn(*text))
            return number;
    problem(node.at, fmt::format("`{}` is no whole number of 0 or more", key),
            "Write it as 64 or 0x40.");
    return std::nullopt;
}

std::optional<std::uint64_t> TableReader::word(std::string_view key) {
    const Node* node = take(key);
    return node == nullptr ? std::nullopt : wordIn(*node, key);
}

std::vector<std::uint64_t> TableReader::words(std::string_view key) {
    std::vector<std::uint64_t> found;
    for (const Node* element : elements(key))
        if (const std::optional<std::uint64_t> number = wordIn(*element, key))
            found.push_back(*number);
    return found;
}

std::uint32_t TableReader::colour(std::string_view key, std::uint32_t otherwise) {
    const std::uint64_t found = word(key).value_or(otherwise);
    if (found <= std::numeric_limits<std::uint32_t>::max())
        return static_cast<std::uint32_t>(found);
    problem(at(key), fmt::format("`{}` is no colour", key),
            "Write it as 0xBBGGRR: blue, green and red from 00 to FF.");
    return otherwise;
}

std::optional<BitList> TableReader::bits(std::string_view key) {
    const Node* node = take(key);
    if (node == nullptr)
        return std::nullopt;
    std::optional<BitList> list;
    if (const std::string* text = node->text())
        list = BitList::parse(*text);
    else if (const std::int64_t* number = node->number())
        list = BitList::parse(std::to_string(*number));
    if (!list)
        problem(node->at, fmt::format("`{}` names no bits", key),
                R"(Write the highest bit first, as "7:5" or "2:0,4:3", each from 0 to 63.)");
    return list;
}

std::optional<ControlName> TableReader::controlIn(std::string_view text) {
    ControlName name;
    const std::size_t open = text.find('(');
    name.name = text.substr(0, open);
    for (const char c : name.name)
        if (!isNameCharacter(c))
            return std::nullopt;
    if (open == std::string_view::npos)
        return name;
    std::string_view index = text.substr(open + 1);
    if (name.name.empty() || !index.ends_with(')'))
        return std::nullopt;
    index.remove_suffix(1);
    const std::optional<std::uint64_t> number = numberIn(index);
    if (!number || *number > std::numeric_limits<std::int16_t>::max())
        return std::nullopt;
    name.index = static_cast<int>(*number);
    return name;
}

ControlName TableReader::control(std::string_view key, ControlName otherwise) {
    const Node* node = take(key);
    if (node == nullptr)
        return otherwise;
    const std::string* text = node->text();
    const std::optional<ControlName> name =
        text != nullptr ? controlIn(*text) : std::optional<ControlName>();
    if (name)
        return *name;
    problem(node->at, fmt::format("`{}` is no name of a control", key),
            "Write it as \"Name\" or \"Name(3)\", of letters, digits and underscores.");
    return otherwise;
}

std::vector<ControlName> TableReader::controls(std::string_view key) {
    std::vector<ControlName> names;
    for (const Node* element : elements(key)) {
        const std::string* text = element->text();
        const std::optional<ControlName> name =
            text != nullptr ? controlIn(*text) : std::optional<ControlName>();
        if (!name)
            problem(element->at, fmt::format("`{}` has something that names no control", key),
                    "Write each as \"Name\" or \"Name(3)\", of letters, digits and underscores.");
        names.push_back(name.value_or(ControlName()));
    }
    return names;
}

std::vector<ControlRange> TableReader::ranges(std::string_view key) {
    std::vector<ControlRange> all;
    for (const std::string& text : texts(key))
        for (const ControlRange& range : rangesIn(text))
            all.push_back(range);
    return all;
}

std::vector<ControlRange> TableReader::rangesIn(std::string_view text) {
    std::vector<ControlRange> all;
    while (!text.empty()) {
        const std::string word(text.substr(0, text.find(' ')));
        text.remove_prefix(std::min(text.size(), word.size() + 1));
        if (const auto range = rangeIn(word))
            all.push_back(*range);
        else
            problem(at(), fmt::format("\"{}\" names no controls", word),
                    "Write it as \"Name\", \"Name(3)\" or \"Name(4..7)\".");
    }
    return all;
}

int TableReader::oneOf(std::string_view key, const std::vector<std::string>& choices) {
    const Node* node = take(key);
    if (node == nullptr)
        return 0;
    if (const std::string* text = node->text())
        for (std::size_t i = 0; i < choices.size(); ++i)
            if (choices[i] == *text)
                return static_cast<int>(i);
    problem(node->at, fmt::format("`{}` has no such value", key),
            fmt::format("Choose one of: {}.", fmt::join(choices, ", ")));
    return 0;
}

} // namespace bitlux::chips
