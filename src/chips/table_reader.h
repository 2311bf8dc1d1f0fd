#pragma once

#include "chips/description.h"
#include "chips/document.h"

#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace bitlux::chips {

/// Reads a table of a chip's file key by key; the keys are literals. A value of the wrong kind is a
/// problem and treated as missing; keys that were not read are problems when the reader is
/// destroyed.
class TableReader {
public:
    /// A node that is no table is a problem and treated as an empty one. Both outlive the reader.
    TableReader(const Node& node, Problems& problems);
    ~TableReader();
    TableReader(const TableReader&) = delete;
    TableReader& operator=(const TableReader&) = delete;

    [[nodiscard]] Place at() const { return node_.at; }
    /// The position of a key's value; the position of the table when the key is missing.
    [[nodiscard]] Place at(std::string_view key) const;
    [[nodiscard]] bool has(std::string_view key) { return take(key) != nullptr; }
    /// The node of a key, or an empty table.
    const Node& section(std::string_view key);
    /// The tables of a list, none when the key is missing.
    std::vector<const Node*> tables(std::string_view key);
    /// The elements of a list; a single value counts as a list of one.
    std::vector<const Node*> elements(std::string_view key);

    /// A text has no control characters.
    std::string text(std::string_view key, std::string otherwise = {});
    /// Adds a problem if a key is missing.
    bool require(std::string_view key, std::string advice);
    /// A required text that is not empty.
    std::string required(std::string_view key);
    std::vector<std::string> texts(std::string_view key);
    bool truth(std::string_view key, bool otherwise);
    /// A whole number from `least` to `most`.
    int number(std::string_view key, int otherwise, int least, int most);
    /// 0 or more; texts as "0xFFFFFFFFFFFFFFFF" are for numbers beyond TOML's range.
    std::optional<std::uint64_t> word(std::string_view key);
    std::vector<std::uint64_t> words(std::string_view key);
    /// A word of up to 32 bits.
    std::uint32_t colour(std::string_view key, std::uint32_t otherwise);
    /// "7:5", "2:0,4:3", or the number of one bit.
    std::optional<BitList> bits(std::string_view key);
    /// "Name" or "Name(3)"; an empty text is no control. `otherwise` is the default.
    ControlName control(std::string_view key, ControlName otherwise = {});
    /// A list of such names; an empty text means a missing control.
    std::vector<ControlName> controls(std::string_view key);
    /// A list of "Name", "Name(3)" or "Name(4..7)".
    std::vector<ControlRange> ranges(std::string_view key);
    /// The names in one text, separated by blanks.
    std::vector<ControlRange> rangesIn(std::string_view text);
    /// Index of one of `choices`; 0 when the key is missing.
    int oneOf(std::string_view key, const std::vector<std::string>& choices);

    void problem(const Place& at, std::string text, std::string advice);

    static std::optional<ControlName> controlIn(std::string_view text);

private:
    const Node* take(std::string_view key);
    bool isClean(const Node& node, const std::string& text, std::string_view key);
    std::optional<std::uint64_t> wordIn(const Node& node, std::string_view key);

    const Node& node_;
    Problems& problems_;
    std::vector<std::string_view> asked_; ///< literals
};

} // namespace bitlux::chips
