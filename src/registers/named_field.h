#pragma once

#include "chips/description.h"

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace bitlux {

/// Bits of a value that have a name: a field of the chip's file, or a captioned bit that no field
/// contains.
struct NamedField {
    /// The field counts only while other bits of the value are these.
    struct Condition {
        chips::BitList bits;
        std::uint64_t code = 0;
    };

    std::string name;
    chips::BitList bits;
    std::vector<chips::Choice> choices; ///< texts of values; not every value needs one
    std::optional<Condition> condition;

    /// Whether it counts in `value`.
    [[nodiscard]] bool appliesTo(std::uint64_t value) const {
        return !condition || condition->bits.taken(value) == condition->code;
    }
    /// The text of one of its values; empty when the value has none.
    [[nodiscard]] std::string_view textOf(std::uint64_t code) const;
    /// The text, else the number: decimal for up to 9, else hexadecimal.
    [[nodiscard]] std::string shown(std::uint64_t code) const;
    /// The same in short: of a text such as "Enhanced 1: refresh by a code." what is in front of
    /// ": ", if no other value begins so, and no full stop.
    [[nodiscard]] std::string shortTextOf(std::uint64_t code) const;
    /// The value that a user means: a number ("5", "0x1F", "0b101") or a text of the field.
    /// Raises Failure: OutOfRange for a number that does not fit, Conversion for any other text and
    /// for one that is both a number and the text of another value.
    [[nodiscard]] std::uint64_t codeFrom(std::string_view text) const;
};

/// A whole number as "18", "0x12" or "0b10010", with underscores between digits; nothing for any
/// other text and beyond 64 bits.
std::optional<std::uint64_t> wholeNumber(std::string_view text);

/// The described fields of a register and its other captioned bits, from the highest bit down.
std::vector<NamedField> fieldsOf(const chips::Register& of);
/// The captioned bits of a row from the highest down, without those in `covered`.
std::vector<NamedField> bitsOf(const std::vector<std::string>& captions, std::uint64_t covered = 0);

} // namespace bitlux
