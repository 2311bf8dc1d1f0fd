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

/// What a chip's file says of a chip. Panel, sequence, model on the virtual bench and the names on
/// the command line are made from it. It is plain data and knows no one; docs/chip-files.md tells
/// what each part of a file means.
namespace bitlux::chips {

/// The page of commands and views that stand beside the status row, on all pages.
inline constexpr std::string_view statusPage = "Status";

/// Back colours of labels as they are stored: the low bytes are blue, green and red; or one of the
/// system's colours.
struct RowColours {
    std::uint32_t one = 0xFFFFC0;
    std::uint32_t zero = 0x80000005;

    bool operator==(const RowColours&) const = default;
};

/// A row of labels, one a bit.
struct Row {
    ControlName first;                 ///< label of bit 0; the next ones follow
    std::vector<std::string> captions; ///< bit 0 first; "-" where a bit carries nothing
    RowColours colours;
    std::string form; ///< a companion form that has the row; empty for the panel

    [[nodiscard]] bool exists() const { return first.exists(); }
    [[nodiscard]] int width() const { return static_cast<int>(captions.size()); }
};

/// A line of a sequence. It has a name, and a value of its own where it is no write.
struct Line {
    std::string name; ///< empty when no sequence knows it
    std::string value;
    ControlName button;                   ///< appends the line to the sequence
    std::vector<std::string> aliases;     ///< other names that mean the same
    std::optional<std::uint64_t> address; ///< that a line of this name means, when it is another
    bool played = true;                   ///< a sequence knows it; else it is only recorded
    bool takesValue = true;               ///< a sequence writes the value of the line, else 0

    [[nodiscard]] bool exists() const { return !name.empty(); }
};

/// Over which bits of a word a check is computed, and where it stands.
struct WordCheck {
    enum class Kind : std::uint8_t { None, EvenParity, OddParity, Crc };

    Kind kind = Kind::None;
    BitList over;
    BitList place;                ///< a bit for parity, as many bits as the CRC has
    std::uint64_t polynomial = 0; ///< without its highest term; of as many bits as `place`
    std::uint64_t start = 0;
    std::uint64_t invert = 0; ///< is combined with the CRC at the end
    Place at;

    [[nodiscard]] bool exists() const { return kind != Kind::None; }
    /// `word` with its check in place.
    [[nodiscard]] std::uint64_t sealed(std::uint64_t word) const;
};

/// A status bit that is set while some flag is.
struct StatusSum {
    int bit = 0;
    std::vector<ControlRange> of; ///< labels of views of flags on the panel
    Place at;
};

/// What a word asks of the chip.
enum class Operation : std::uint8_t { Write, Read, Flags };

/// The words that carry a chip's registers: a constant that tells the operation, the address and
/// the data in their places.
struct WordFormat {
    int bits = 8;          ///< 1 to 64
    std::int16_t type = 1; ///< clocking, 1 to 8
    /// Whole bytes in every eighth element of the word, which only a dongle takes; the most
    /// significant bit has to travel first then.
    bool packed = false;
    BitList address;
    BitList data;
    std::uint64_t write = 0;
    std::uint64_t read = 0;
    std::optional<std::uint64_t> flags; ///< no words of their own read flags when it is missing
    /// The answer to a word comes with the next one; `fetch` is sent for it.
    bool answersNext = false;
    std::optional<std::uint64_t> fetch; ///< the same word again when it is missing
    WordCheck check;
    Row status;          ///< one label for each bit of an answer from a certain one on
    int statusFirst = 0; ///< bit of an answer that the first label shows
    std::vector<StatusSum> sums;
    BitList statusOfRead; ///< bits of an answer to a read that are status; the others are data
    Place at;

    [[nodiscard]] std::uint64_t mask() const {
        return bits >= 64 ? ~std::uint64_t{0} : (std::uint64_t{1} << bits) - 1;
    }
    [[nodiscard]] std::uint64_t constant(Operation operation) const;
    /// A word with its check.
    [[nodiscard]] std::uint64_t word(Operation operation, std::uint64_t where,
                                     std::uint64_t value) const;
    /// Of what operation a word is; nothing when none has its constants.
    [[nodiscard]] std::optional<Operation> operationOf(std::uint64_t word) const;
};

/// One of the values of a field.
struct Choice {
    std::string text;
    std::uint64_t code = 0;
};

/// A control has to be chosen for a field to count.
struct Condition {
    ControlName control; ///< an option or a box

    [[nodiscard]] bool exists() const { return control.exists(); }
};

/// Bits of a register that mean something together, and the control that chooses their value.
struct Field {
    enum class Kind : std::uint8_t { Options, Box, List };

    std::string title;
    BitList bits;
    Kind kind = Kind::Options;
    /// The first option, the box, or the list. None for bits that only tell something: those of a
    /// register that is only read, and several bits without texts, which are a number.
    ControlName control;
    std::vector<Choice> choices; ///< of a box one: what it says, and what it sets when ticked
    ControlName frame;           ///< around the options, where it has a name
    ControlName mirror;          ///< choosing option i also chooses the option i behind this one
    ControlName gate;            ///< box that shows or hides the options; choosing one ticks it
    Condition when;              ///< where the bits depend on another choice
    bool follows = true;         ///< a click on a bit changes the choice
    bool shares = false;         ///< other fields may describe the same bits
    bool typed = false;          ///< a list that texts may be typed into
    std::string prompt;          ///< what a list shows before anything is chosen
    int markedFrom = -1;         ///< this choice and those behind it want the panel's marker file
    int selected = -1;           ///< choice at the start, -1 for none
    std::string note;
    std::vector<std::string> heads; ///< of columns, below which the words of the texts stand
    Place at;
};

/// A label that says in words what a view shows.
struct Told {
    ControlName label;
    std::vector<std::string> texts; ///< one for each value; the first one at the start
    std::string otherwise;          ///< for values beyond
    std::string procedure;          ///< of the form, which says it anew; may be empty

    [[nodiscard]] bool exists() const { return label.exists(); }
};

/// Something of a register that can be read, and where it is shown.
struct View {
    std::string title; ///< of its button
    Operation operation = Operation::Read;
    std::uint64_t address = 0;
    std::uint64_t extra = 0; ///< data bits that the request has set
    Row row;                 ///< none when the row of the register shows it
    ControlName button;
    Line line;
    std::vector<std::string> on; ///< variants that have it; empty for all
    std::string page;            ///< where it is shown; empty for the page of its register
    std::string group;           ///< heading on that page
    bool clears = false;         ///< a read changes the chip
    /// What it shows at first where it has a value of its own, beside that of the register.
    std::optional<std::uint64_t> reset;
    std::string switches; ///< group of its switches on the bench, where its title is no good
    ControlName frame;    ///< around it, where it stands above all pages
    Told told;
    Place at;

    /// A view of flags, or one with a reset value, does not show the register.
    [[nodiscard]] bool ownValue() const { return operation == Operation::Flags || reset; }
};

/// A code of the chip that goes back to it: a register is read, and written with some of its bits
/// inverted and all others as in a value.
struct GivenBack {
    std::string owner; ///< title of the register
    BitList inverted;
    std::uint64_t value = 0;

    [[nodiscard]] bool exists() const { return !owner.empty(); }
};

/// A word that never changes, or a code that is given back, behind a word where there is one.
struct Command {
    std::string title; ///< of its button
    std::optional<std::uint64_t> word;
    GivenBack givenBack;
    ControlName button;
    Line line;
    std::string page;
    std::string group; ///< heading on the page
    std::string form;  ///< a companion form that has it; empty for the panel
    std::string note;
    Place at;
};

enum class Access : std::uint8_t { ReadWrite, ReadOnly, WriteOnly, ReadClears, WriteOneClears };

/// A register: its page, its words and its value.
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
    /// the captions are there all the same.
    Row row;
    ControlName hexBox;    ///< shows the row in hexadecimal
    ControlName hexButton; ///< takes the row from there
    ControlName writeButton;
    std::string writeTitle;
    Line writeLine;
    std::string reply; ///< title of the view whose row shows what answers a write
    ControlName alarm; ///< label that is visible while the reply to the last write was all ones
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
    /// Nothing but views that stand above all pages.
    [[nodiscard]] bool standsAbove() const;
    /// A view by title; null when there is none.
    [[nodiscard]] const View* find(std::string_view wanted) const;
};

/// Buttons that another button presses one after the other, or views that it reads.
struct ReadAll {
    struct Step {
        ControlName button;
        std::vector<std::string> variants; ///< on which it is pressed; empty for all
        ControlName row;                   ///< of the view to read, where no button does
    };
    /// What a failed link does to the steps that are left.
    enum class Failure : std::uint8_t { GoesOn, EndsAfterFirst, EndsUnanswered, Ends };

    std::string title;
    std::string group; ///< heading in front of the button
    std::string page;  ///< of registers, where it stands on one
    std::string form;  ///< a companion form that has it; empty for the panel
    ControlName button;
    std::vector<Step> steps;
    Failure failure = Failure::Ends;
    Place at;
};

/// What a variant of a chip lacks.
struct Variants {
    enum class Effect : std::uint8_t { Enabled, Visible, Ticked };
    /// Controls that are enabled, visible, or enabled and ticked on some variants alone.
    struct Rule {
        Effect effect = Effect::Enabled;
        std::vector<ControlRange> controls;
        std::vector<std::string> on;
        Place at;
    };
    /// A label that says something else on some variants.
    struct Caption {
        ControlName label;
        std::string text;
        std::vector<std::string> on;
        Place at;
    };

    ControlName options; ///< the first one; the others follow
    std::vector<std::string> titles;
    int selected = 0;            ///< title at the start, from 0
    std::string otherwise = "-"; ///< what a label says on a variant that no row of it names
    std::vector<Rule> rules;
    std::vector<Caption> captions;
    Place at;

    [[nodiscard]] bool exists() const { return !titles.empty(); }
    /// What the labels of a row say on a variant; its captions where nothing else is told.
    [[nodiscard]] std::vector<std::string> captionsOn(std::string_view variant,
                                                      const Row& row) const;
};

/// What the virtual bench has of a chip: the chip, or one of its variants.
struct Device {
    /// A reset value that differs from what the chip's registers say.
    struct Reset {
        std::string owner; ///< title of the register
        std::string view;  ///< title of a view with a value of its own; empty for the register
        std::uint64_t value = 0;
        Place at;
    };

    std::string name;        ///< by which command line, scripts and bench know it
    std::string description; ///< how it differs from the others, in a line
    std::string variant;     ///< title; it has the flags that have a caption there. Empty for all
    std::vector<Reset> resets;
    Place at;
};

/// A chip. It is read once and never changes.
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
    std::vector<std::string> modelParts; ///< of the model on the bench, written in C++
    std::vector<Device> devices;         ///< at least one; the chip itself when the file has none

    /// The titles of the panel's pages of registers and commands, in the order of the file; the one
    /// of the status row is no such page.
    [[nodiscard]] std::vector<std::string> registerPages() const;
    /// By title; null when there is none.
    [[nodiscard]] const Register* find(std::string_view wanted) const;
    /// The sheet of a form beside the panel; null when there is none.
    [[nodiscard]] const Sheet* sheetOf(std::string_view form) const;
    /// By name; null when there is none.
    [[nodiscard]] const Device* findDevice(std::string_view wanted) const;
};

/// A view of flags, whose it is, and some of its bits.
struct FlagBits {
    const Register* owner = nullptr;
    const View* view = nullptr;
    std::uint64_t bits = 0;
};
/// What labels of the panel show; no view when they are none of one view of flags.
FlagBits flagsShownBy(const Chip& chip, const ControlRange& labels);

/// The view that a step reads; null for one that presses a button, or when there is none.
const View* viewOf(const Chip& chip, const ReadAll& group, const ReadAll::Step& step);

using ChipPtr = std::shared_ptr<const Chip>;

} // namespace bitlux::chips
