#pragma once

#include <cstdint>
#include <span>
#include <string_view>

/// What a data sheet says of a chip, as constant tables: the panels make their pages, handlers and
/// sequence commands from them, the virtual bench its model of the chip.
namespace bitlux::oldchips {

/// Captions of a row of labels, bit 0 first; "-" where a bit carries nothing. A row has as many
/// bits as captions, 1 to 32.
using BitCaptions = std::span<const std::string_view>;

/// Name of a control, or of an element of a control array; none when the name is empty.
struct ControlName {
    std::string_view name;
    int index = -1; ///< -1 for a control that is no element

    [[nodiscard]] constexpr bool exists() const { return !name.empty(); }
    constexpr bool operator==(const ControlName&) const = default;
};

/// One of several values of a field, chosen by option buttons: the button `firstOption` + v of the
/// array stands for value v.
struct OptionField {
    std::string_view title; ///< of the group of buttons
    std::string_view options;
    int firstOption = 0;
    int lowBit = 0;
    int width = 1; ///< bits
    std::span<const std::string_view> captions;
    ControlName frame{};  ///< around the buttons, where it has a name
    ControlName mirror{}; ///< choosing value v also chooses the button v behind this one
    ControlName gate{};   ///< box that shows or hides the buttons; choosing one ticks it
};

/// A bit that a check box sets.
struct CheckBit {
    ControlName box;
    int bit = 0;
    std::string_view caption;
};

/// Bits that the index of a list sets, not always in their order.
struct ComboField {
    std::string_view combo;
    std::string_view prompt; ///< shown while nothing is selected
    std::span<const std::string_view> items;
    std::span<const int> bitOfIndexBit; ///< bit of the register that bit k of the index sets
};

/// A view of a register that can be read, and the row of labels that shows it.
struct ReadView {
    std::string_view labels; ///< control array; none when the view does not exist
    BitCaptions captions{};
    std::uint32_t litColour = 0;
    ControlName readButton;
    ControlName sequenceButton{}; ///< appends the read to the sequence

    [[nodiscard]] constexpr bool exists() const { return !labels.empty(); }
};

/// The words that carry a chip's registers: a constant that tells the operation, the address in its
/// place, the data right-aligned. The most significant bit travels first.
struct WordFormat {
    int bits = 0; ///< 1 to 32
    int addressShift = 0;
    std::uint32_t addressMask = 0; ///< of the address itself
    std::uint32_t operationMask = 0;
    std::uint32_t write = 0;
    std::uint32_t readLow = 0;
    std::uint32_t readHigh = 0;

    [[nodiscard]] constexpr std::uint32_t writing(int address, std::uint32_t data) const {
        return write | static_cast<std::uint32_t>(address) << addressShift | data;
    }
    [[nodiscard]] constexpr std::uint32_t reading(int address, bool highView) const {
        return (highView ? readHigh : readLow) | static_cast<std::uint32_t>(address)
                                                     << addressShift;
    }
};

/// Which lines of a sequence mean something to the register.
struct SequenceLines {
    bool write = false;
    bool readLow = false;
    bool readHigh = false; ///< also of registers whose high view has no row
};

/// A register of a panel: its page and what reads and writes it. It is as wide as its write row.
struct Register {
    std::string_view title;
    std::uint8_t address = 0;
    std::string_view writeLabels; ///< control array of the write row: lit labels are the byte
    BitCaptions writeCaptions{};
    ControlName writeButton;
    std::string_view writeCaption = "Write";
    ControlName sequenceButton{}; ///< appends the write to the sequence
    /// The lines of a sequence are called by it: "MUX" with " Write", " Read Low" and " Read High"
    /// behind it. Empty when no sequence knows the register.
    std::string_view stem;
    std::string_view writeName{}; ///< name of the write where it is another
    SequenceLines lines{.write = true, .readLow = true, .readHigh = true};
    bool addsParity = true; ///< a write carries the parity bit
    int lowLineReads = -1;  ///< address that the line " Read Low" reads, when it is another
    std::span<const OptionField> options{};
    std::span<const CheckBit> checks{};
    std::span<const ComboField> combos{};
    ReadView low;
    ReadView high{};
};

/// A chip whose table says all there is to it.
struct Chip {
    std::string_view form; ///< name of its panel
    std::string_view title;
    WordFormat format;
    std::int16_t spiType = 1;
    std::span<const Register> registers;
};

} // namespace bitlux::oldchips
