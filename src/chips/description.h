#pragma once

#include "chips/bit_list.h"
#include "chips/control_name.h"
#include "chips/panel_description.h"
#include "chips/problem.h"

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

/// The description of a chip, as read from its file. Panel, sequence, model on the virtual bench
/// and the names on the command line are derived from it. It is plain data; docs/chip-files.md
/// explains each part of a file.
namespace bitlux::chips {

/// The page of commands and views that are shown beside the status row, on all pages.
inline constexpr std::string_view statusPage = "Status";

/// Background colours of labels: blue, green and red in the low bytes, or a system colour as
/// 0x80000005.
struct RowColours {
    std::uint32_t one = 0xFFFFC0;
    std::uint32_t zero = 0x80000005;

    bool operator==(const RowColours&) const = default;
};

/// A row of labels, one a bit.
struct Row {
    ControlName first;                 ///< label of bit 0; the next ones follow
    std::vector<std::string> captions; ///< bit 0 first; "-" for an unused bit
    RowColours colours;
    std::string form; ///< the companion form with the row; empty for the panel

    [[nodiscard]] bool exists() const { return first.exists(); }
    [[nodiscard]] int width() const { return static_cast<int>(captions.size()); }
};

/// A line of a sequence: its name, and its value if it is not a write.
struct Line {
    std::string name; ///< empty if it is in no sequence
    std::string value;
    ControlName button;                   ///< appends the line to the sequence
    std::vector<std::string> aliases;     ///< other names with the same meaning
    std::optional<std::uint64_t> address; ///< meant by a line of this name, if different
    bool played = true;                   ///< a sequence plays it; else it is only recorded
    bool takesValue = true;               ///< a sequence writes the value of the line, else 0

    [[nodiscard]] bool exists() const { return !name.empty(); }
};

/// The check of a word: the bits it covers, and its position.
struct WordCheck {
    enum class Kind : std::uint8_t { None, EvenParity, OddParity, Crc };

    Kind kind = Kind::None;
    BitList over;
    BitList place;                ///< a bit for parity, as many bits as the CRC has
    std::uint64_t polynomial = 0; ///< without its highest term; of as many bits as `place`
    std::uint64_t start = 0;
    std::uint64_t invert = 0; ///< XORed with the CRC at the end
    Place at;

    [[nodiscard]] bool exists() const { return kind != Kind::None; }
    /// `word` with its check in place.
    [[nodiscard]] std::uint64_t sealed(std::uint64_t word) const;
};

/// A status bit that is set while any of some flags is.
struct StatusSum {
    int bit = 0;
    std::vector<ControlRange> of; ///< labels of views of flags on the panel
    Place at;
};

/// The operation of a word.
enum class Operation : std::uint8_t { Write, Read, Flags };

/// The format of the words that access registers: a constant for the operation, and the positions
/// of address and data.
struct WordFormat {
    int bits = 8;          ///< 1 to 64
    std::int16_t type = 1; ///< clocking, 1 to 8
    /// Whole bytes in every eighth element of the word, for the dongle only; the most significant
    /// bit must then be sent first.
    bool packed = false;
    BitList address;
    BitList data;
    std::uint64_t write = 0;
    std::uint64_t read = 0;
    std::optional<std::uint64_t> flags; ///< if missing, flags have no words of their own
    /// The answer to a word comes with the next word, which is `fetch`.
    bool answersNext = false;
    std::optional<std::uint64_t> fetch; ///< the same word again if missing
    WordCheck check;
    Row status;          ///< one label for each bit of an answer from a certain one on
    int statusFirst = 0; ///< bit of an answer shown by the first label
    std::vector<StatusSum> sums;
    BitList statusOfRead; ///< bits of an answer to a read that are status; the others are data
    Place at;

    [[nodiscard]] std::uint64_t mask() const {
        return bits >= 64 ? ~std::uint64_t{0} : (std::uint64_t{1} << bits) - 1;
    }
    [[nodiscard]] std::uint64_t constant(Operation operation) const;
    /// A complete word with its check.
    [[nodiscard]] std::uint64_t word(Operation operation, std::uint64_t where,
                                     std::uint64_t value) const;
    /// The operation whose constant a word has; nothing if there is none.
    [[nodiscard]] std::optional<Operation> operationOf(std::uint64_t word) const;
};

/// One of the values of a field.
struct Choice {
    std::string text;
    std::uint64_t code = 0;
};

/// A control that must be on for a field to apply.
struct Condition {
    ControlName control; ///< an option or a box

    [[nodiscard]] bool exists() const { return control.exists(); }
};

/// Bits of a register with a common meaning, and the control that selects their value.
struct Field {
    enum class Kind : std::uint8_t { Options, Box, List };

    std::string title;
    BitList bits;
    Kind kind = Kind::Options;
    /// The first option, the box, or the list. None for bits that are only shown: those of a
    /// read-only register, and several bits without texts, which are a number.
    ControlName control;
    std::vector<Choice> choices; ///< a box has one: its text, and its value when ticked
    ControlName frame;           ///< around the options, if it has a name
    ControlName mirror;          ///< choosing option i also chooses option i from here on
    ControlName gate;            ///< box that shows or hides the options; a choice ticks it
    Condition when;              ///< if the bits depend on another choice
    bool follows = true;         ///< a click on a bit changes the choice
    bool shares = false;         ///< other fields may describe the same bits
    bool typed = false;          ///< a list that accepts typed text
    std::string prompt;          ///< text of a list before anything is chosen
    int markedFrom = -1;         ///< this choice and the following require the marker file
    int selected = -1;           ///< choice at the start, -1 for none
    std::string note;
    std::vector<std::string> heads; ///< headings of columns for the words of the texts
    Place at;
};

/// A label that shows the value of a view as text.
struct TextLabel {
    ControlName label;
    std::vector<std::string> texts; ///< one for each value; initially the first one
    std::string otherwise;          ///< for all other values
    std::string procedure;          ///< of the form, which updates it; may be empty

    [[nodiscard]] bool exists() const { return label.exists(); }
};

/// Something that can be read, and its place in the panel.
struct View {
    std::string title; ///< of its button
    Operation operation = Operation::Read;
    std::uint64_t address = 0;
    std::uint64_t extra = 0; ///< data bits that the request sets
    Row row;                 ///< none if the row of the register shows it
    ControlName button;
    Line line;
    std::vector<std::string> on; ///< variants that have it; empty for all
    std::string page;            ///< empty for the page of its register
    std::string group;           ///< heading on that page
    bool clears = false;         ///< a read changes the chip
    /// Its reset value, if it has a value of its own beside that of the register.
    std::optional<std::uint64_t> reset;
    std::string switches; ///< group of its switches on the bench; else its title
    ControlName frame;    ///< around it, if it is above all pages
    TextLabel textLabel;
    Place at;

    /// A view of flags, or one with a reset value, does not show the register.
    [[nodiscard]] bool ownValue() const { return operation == Operation::Flags || reset; }
};

/// A code of the chip that is returned to it: a register is read, and written with some of its bits
/// inverted and all others as in a value.
struct GivenBack {
    std::string owner; ///< title of the register
    BitList inverted;
    std::uint64_t value = 0;

    [[nodiscard]] bool exists() const { return !owner.empty(); }
};

/// A constant word, or a code that is returned, after a word if there is one.
struct Command {
    std::string title; ///< of its button
    std::optional<std::uint64_t> word;
    GivenBack givenBack;
    ControlName button;
    Line line;
    std::string page;
    std::string group; ///< heading on the page
    std::string form;  ///< the companion form with it; empty for the panel
    std::string note;
    Place at;
};

enum class Access : std::uint8_t { ReadWrite, ReadOnly, WriteOnly, ReadClears, WriteOneClears };

/// A register: its page, words and value.
struct Register {
    std::string title;
    std::string page;
    std::uint64_t address = 0;
    std::uint64_t reset = 0;
    Access access = Access::ReadWrite;
    std::uint64_t neverWritten = 0;  ///< data bits that a write leaves 0
    std::uint64_t alwaysWritten = 0; ///< data bits that a write sets
    /// The chip changes it itself, or a write starts something: a snapshot is not written back to
    /// it, and what a read shows is not compared with what was written.
    bool isVolatile = false;
    /// Labels that are the register's value, bit 0 first. Without them the choices are its value;
    /// the captions exist in both cases.
    Row row;
    ControlName hexBox;    ///< shows the row in hexadecimal
    ControlName hexButton; ///< sets the row from there
    ControlName writeButton;
    std::string writeTitle;
    Line writeLine;
    std::string reply; ///< title of the view whose row shows the answer to a write
    ControlName alarm; ///< label that is visible while the last reply was all ones
    std::string alarmText;
    std::vector<Field> fields;
    std::vector<View> views;
    std::string note;
    Place at;

    [[nodiscard]] int width() const { return row.width(); }
    [[nodiscard]] std::uint64_t mask() const {
        return width() >= 64 ? ~std::uint64_t{0} : (std::uint64_t{1} << width()) - 1;
    }
    [[nodiscard]] bool writable() const {
        return access != Access::ReadOnly && access != Access::ReadClears;
    }
    /// Has only views that are above all pages.
    [[nodiscard]] bool isAbovePages() const;
    /// A view by title; null when there is none.
    [[nodiscard]] const View* find(std::string_view wanted) const;
};

/// A button that presses others one after the other, or reads views.
struct ReadAll {
    struct Step {
        ControlName button;
        std::vector<std::string> variants; ///< for which it is pressed; empty for all
        ControlName row;                   ///< of the view to read, if no button does
    };
    /// Effect of a failed link on the remaining steps.
    enum class Failure : std::uint8_t { GoesOn, EndsAfterFirst, EndsUnanswered, Ends };

    std::string title;
    std::string group; ///< heading before the button
    std::string page;  ///< of registers, if it is on one
    std::string form;  ///< a companion form that has it; empty for the panel
    ControlName button;
    std::vector<Step> steps;
    Failure failure = Failure::Ends;
    Place at;
};

/// What a variant of a chip lacks.
struct Variants {
    enum class Effect : std::uint8_t { Enabled, Visible, Ticked };
    /// Controls that are enabled, visible, or enabled and ticked on some variants only.
    struct Rule {
        Effect effect = Effect::Enabled;
        std::vector<ControlRange> controls;
        std::vector<std::string> on;
        Place at;
    };
    /// A label with another text on some variants.
    struct Caption {
        ControlName label;
        std::string text;
        std::vector<std::string> on;
        Place at;
    };

    ControlName options; ///< the first one; the others follow
    std::vector<std::string> titles;
    int selected = 0;            ///< initial title, from 0
    std::string otherwise = "-"; ///< text of a label for variants that it does not name
    std::vector<Rule> rules;
    std::vector<Caption> captions;
    Place at;

    [[nodiscard]] bool exists() const { return !titles.empty(); }
    /// The texts of the labels of a row on a variant; by default its captions.
    [[nodiscard]] std::vector<std::string> captionsOn(std::string_view variant,
                                                      const Row& row) const;
};

/// A device of the virtual bench: the chip, or one of its variants.
struct Device {
    /// A reset value that differs from that of the chip's register.
    struct Reset {
        std::string owner; ///< title of the register
        std::string view;  ///< title of a view with a value of its own; empty for the register
        std::uint64_t value = 0;
        Place at;
    };

    std::string name;        ///< on the command line, in scripts and on the bench
    std::string description; ///< how it differs from the others, in a line
    std::string variant;     ///< title; only flags with a caption there exist. Empty for all
    std::vector<Reset> resets;
    Place at;
};

/// A chip. It is read once and does not change.
struct Chip {
    std::string file;        ///< from which it was read, for messages
    std::string name;        ///< by which command line, scripts and bench know it
    std::string title;       ///< for people
    std::string description; ///< in a line
    WordFormat word;
    std::vector<Register> registers;
    std::vector<Command> commands;
    std::vector<ReadAll> readAlls;
    Variants variants;
    SequenceStyle sequence;
    AutomaticReads automaticReads;
    std::vector<OwnControl> controls;
    std::vector<Sheet> sheets;
    PanelLayout panel;
    std::vector<std::string> modelParts; ///< of the model on the bench, in C++
    std::vector<Device> devices;         ///< at least one; the chip itself if the file has none

    /// The titles of the panel's pages of registers and commands, in the order of the file; without
    /// that of the status row.
    [[nodiscard]] std::vector<std::string> registerPages() const;
    /// By title; null when there is none.
    [[nodiscard]] const Register* find(std::string_view wanted) const;
    /// The sheet of a form beside the panel; null when there is none.
    [[nodiscard]] const Sheet* sheetOf(std::string_view form) const;
    /// By name; null when there is none.
    [[nodiscard]] const Device* findDevice(std::string_view wanted) const;
};

/// A view of flags with its register, and some of its bits.
struct FlagBits {
    const Register* owner = nullptr;
    const View* view = nullptr;
    std::uint64_t bits = 0;
};
/// The flags shown by labels of the panel; no view if they do not belong to one view.
FlagBits flagsShownBy(const Chip& chip, const ControlRange& labels);

/// The view that a step reads; null if it presses a button, or if there is none.
const View* viewOf(const Chip& chip, const ReadAll& group, const ReadAll::Step& step);

using ChipPtr = std::shared_ptr<const Chip>;

} // namespace bitlux::chips
