#pragma once

#include "chips/problem.h"

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

namespace bitlux::chips {

/// A value of a TOML document with its position in the text.
struct Node {
    struct Entry;
    using List = std::vector<Node>;
    using Table = std::vector<Entry>; ///< in the order of the keys

    Place at;
    Place keyAt{}; ///< position of its key, when it is the value of one
    std::variant<std::int64_t, double, bool, std::string, List, Table> value;

    [[nodiscard]] const std::string* text() const { return std::get_if<std::string>(&value); }
    [[nodiscard]] const std::int64_t* number() const { return std::get_if<std::int64_t>(&value); }
    [[nodiscard]] const bool* truth() const { return std::get_if<bool>(&value); }
    [[nodiscard]] const List* list() const { return std::get_if<List>(&value); }
    [[nodiscard]] const Table* table() const { return std::get_if<Table>(&value); }
    /// The entry of a table; null when there is none, or when this is no table.
    [[nodiscard]] const Node* find(std::string_view key) const;
};

struct Node::Entry {
    std::string key;
    Node value;
};

/// Parses a TOML text that the parser can handle (see parser_guard.h). For an invalid text the
/// result is empty and there is one problem. Tables and lists may be nested 32 deep; a key may have
/// up to eight dots.
std::optional<Node> parseDocument(std::string_view text, Problems& problems);

/// Expands the short forms of a document. A table in a list that contains a table `repeat` of
/// parallel lists is repeated for each position of these lists, with `{key}` in its texts replaced
/// by the element of that key's list. `{0..15}` in a text of a list is replaced by as many texts. A
/// short form that repeats nothing is a problem. The result has at most `most` nodes.
void expand(Node& document, std::size_t most, Problems& problems);

} // namespace bitlux::chips
