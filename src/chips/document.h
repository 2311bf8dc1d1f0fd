#pragma once

#include "chips/problem.h"

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

namespace bitlux::chips {

/// A value of a TOML document with its place in the text.
struct Node {
    struct Entry;
    using List = std::vector<Node>;
    using Table = std::vector<Entry>; ///< in the order of the keys

    Place at;
    Place keyAt{}; ///< where its key stands, when it is the value of one
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

/// Parses a TOML text that is bearable (see parser_guard.h). A text that is none gives nothing and
/// one problem. Tables and lists may lie in each other 32 deep; a key may have up to eight dots.
std::optional<Node> parseDocument(std::string_view text, Problems& problems);

/// Writes out what a document says in short: a table in a list with a table `repeat` of parallel
/// lists stands once for each of their places, with `{key}` in its texts replaced by what the list
/// of that key has there; and `{0..15}` in a text of a list stands for as many texts. What repeats
/// nothing, or stands where it repeats nothing, is a problem. No more than `most` nodes come of it.
void expand(Node& document, std::size_t most, Problems& problems);

} // namespace bitlux::chips
