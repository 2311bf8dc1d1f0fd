#pragma once

#include "platform/documents/problem.h"

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

namespace bitlux::documents {

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

} // namespace bitlux::documents
