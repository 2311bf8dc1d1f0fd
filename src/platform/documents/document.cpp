#include "platform/documents/document.h"

// NOLINTBEGIN(cppcoreguidelines-macro-usage): the parser's own switches
#define TOML_EXCEPTIONS 0
#define TOML_ENABLE_FORMATTERS 0
#define TOML_MAX_NESTED_VALUES 32
// NOLINTEND(cppcoreguidelines-macro-usage)
#include <toml++/toml.h>

namespace bitlux::documents {

const Node* Node::find(std::string_view key) const {
    if (const Table* entries = table())
        for (const auto& [name, node] : *entries)
            if (name == key)
                return &node;
    return nullptr;
}

namespace {

constexpr int deepest = 32;

Place placeOf(const toml::source_position& at) {
    return {.line = static_cast<int>(at.line), .column = static_cast<int>(at.column)};
}

/// The nodes of a document as our own, which may be copied with their places.
// NOLINTBEGIN(misc-no-recursion): no deeper than `deepest`
class Converter {
public:
    explicit Converter(Problems& problems) : problems_(problems) {}

    /// Texts are moved out of `node`.
    Node convert(toml::node& node, int depth) {
        Node made{.at = placeOf(node.source().begin), .value = std::int64_t{0}};
        if (depth > deepest)
            problems_.push_back({made.at, "tables and lists lie too deep in each other",
                                 "Put fewer of them into each other."});
        else if (auto* table = node.as_table())
            made.value = entries(*table, depth);
        else if (auto* array = node.as_array())
            made.value = elements(*array, depth);
        else
            made.value = scalar(node, made.at);
        return made;
    }

private:
    Node::Table entries(toml::table& table, int depth) {
        Node::Table made;
        made.reserve(table.size());
        for (auto&& [key, value] : table) {
            Node node = convert(value, depth + 1);
            node.keyAt = placeOf(key.source().begin);
            if (node.at.line == 0) // a table that a dotted key has made
                node.at = node.keyAt;
            made.push_back({std::string(key.str()), std::move(node)});
        }
        return made;
    }

    Node::List elements(toml::array& array, int depth) {
        Node::List made;
        made.reserve(array.size());
        for (toml::node& element : array)
            made.push_back(convert(element, depth + 1));
        return made;
    }

    decltype(Node::value) scalar(toml::node& node, const Place& at) {
        if (auto* text = node.as_string())
            return std::move(text->get());
        if (const auto* number = node.as_integer())
            return number->get();
        if (const auto* truth = node.as_boolean())
            return truth->get();
        if (const auto* number = node.as_floating_point())
            return number->get();
        problems_.push_back({at, "this kind of value is not used here",
                             "Give a text, a whole number, true or false, a list or a table."});
        return std::int64_t{0};
    }

    Problems& problems_;
};
// NOLINTEND(misc-no-recursion)

} // namespace

std::optional<Node> parseDocument(std::string_view text, Problems& problems) {
    toml::parse_result result = toml::parse(text);
    if (!result) {
        const toml::parse_error& error = result.error();
        problems.push_back({placeOf(error.source().begin), std::string(error.description()),
                            "Correct the TOML text at this place."});
        return std::nullopt;
    }
    return Converter(problems).convert(result.table(), 0);
}

} // namespace bitlux::documents
