#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

namespace bitlux {

/// The words that are stored under names: each row has a name and as many bits as a word. There is
/// always at least one row; Session::QuickCommandTableEmpty says whether it is still free. A free
/// row has an empty name and no bits.
///
/// Names and bits are stored in two blocks, so that emptying costs the same however full the table
/// is.
class QuickCommandTable {
public:
    /// The value of an element without a bit.
    static constexpr std::int16_t noBit = -1;

    QuickCommandTable() { recreate(0); }

    /// Empties the table and leaves one free row for words of so many bits; a negative number
    /// counts as 0.
    void recreate(int wordLength);

    [[nodiscard]] std::size_t rows() const { return nameEnds_.size(); }
    [[nodiscard]] std::size_t wordLength() const { return wordLength_; }

    // Rows from 0; all raise std::out_of_range beyond the last.

    /// Valid until the table changes.
    [[nodiscard]] std::string_view name(std::size_t row) const;
    /// Element i is bit i; noBit for what is not there. Valid until the table changes.
    [[nodiscard]] std::span<const std::int16_t> bits(std::size_t row) const;

    /// The last row of this name.
    [[nodiscard]] std::optional<std::size_t> lastRowNamed(std::string_view name) const;

    /// Adds a free row at the end.
    void addRow();
    /// Removes a row. At least two exist.
    void removeRow(std::size_t row);
    /// Gives the last row a name; an earlier one is replaced.
    void nameLastRow(std::string_view name);
    /// Sets the bits of a row, at least wordLength() of them; further ones are ignored.
    void setBits(std::size_t row, std::span<const std::int16_t> bits);

private:
    void requireRow(std::size_t row) const;
    struct NameHash {
        using is_transparent = void;
        std::size_t operator()(std::string_view name) const {
            return std::hash<std::string_view>{}(name);
        }
    };
    /// The last row of each name.
    using RowsByName = std::unordered_map<std::string, std::size_t, NameHash, std::equal_to<>>;

    std::size_t wordLength_ = 0;
    std::vector<std::int16_t> bits_; ///< row after row
    std::string names_;              ///< row after row
    std::vector<std::size_t> nameEnds_;
    mutable std::optional<RowsByName> index_; ///< none after a change, until the next lookup
};

} // namespace bitlux
