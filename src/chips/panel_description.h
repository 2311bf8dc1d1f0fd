#pragma once

#include "chips/bit_list.h"
#include "chips/control_name.h"
#include "chips/problem.h"

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

/// The description of a chip's panel beyond its registers: the sequence, automatic reads, the
/// controls of parts and their layout, pages and companion forms.
namespace bitlux::chips {

/// The name of the button of a sequence's value editor, if no part provides one.
inline constexpr std::string_view changeButton = "Cm_Change_Value";

/// Appearance and behaviour of the sequence of a panel.
struct SequenceStyle {
    struct Column {
        std::string list;
        std::string title;
    };

    /// Appearance and limits of a wait.
    struct Wait {
        std::string text = "Value"; ///< initial text of its box
        std::string timer = "Timer1";
        bool asksNumber = false; ///< refuses any other text; else it is replaced
        bool endless = false;    ///< a wait of 0, or of a text that is no number, never ends
    };
    struct Loop {
        std::string caption = "Loop";
        std::string start; ///< initial texts of the boxes
        std::string stop;
        ControlName startLabel; ///< captions of the boxes, if they are shown with a loop only
        ControlName stopLabel;
        bool hides = false;   ///< hides its controls without a loop; else disables them
        bool endsRun = false; ///< the stop ends the run; else the lines after the loop follow
        bool picks = false;   ///< clicks on lines choose start and stop alternately
    };
    /// Two points at which a run stops until the chip reports a reset or an interrupt, or the user
    /// continues it; none if the boxes have no texts.
    struct Stops {
        std::vector<std::string> frames; ///< captions of the two frames
        std::vector<std::string> boxes;
        std::vector<std::string> events{"Reset", "Interrupt"};
        bool acts = true; ///< else the controls exist without effect

        [[nodiscard]] bool exists() const { return !boxes.empty(); }
    };

    /// Edits the value of the selected line in an element of Val_loop.
    struct Editor {
        int box = 0;        ///< element; none when it is 0
        ControlName list;   ///< of a part: values among its texts are chosen in it
        ControlName button; ///< of a part, which calls ChangeValue; else the editor has one

        [[nodiscard]] bool exists() const { return box > 0; }
    };
    /// The line at which the dongle outputs a pulse; an element of Val_loop contains it.
    struct Trigger {
        int box = 0;       ///< element; none when it is 0
        ControlName label; ///< of a part: its caption

        [[nodiscard]] bool exists() const { return box > 0; }
    };

    std::string valueTitle = "Value in Hexa";
    std::vector<Column> answers;
    int numbers = 42; ///< line numbers that are always shown
    int boxes = 2;    ///< elements of Val_loop: start and stop of the loop, and those of parts
    std::string appendTitle = ">SEQ"; ///< of the buttons that append a line
    bool wholeWords = false;          ///< a line of a write contains the word, else the data
    bool arrowAtLine = false;         ///< points to the current line, else to the next one
    bool moves = false;               ///< buttons move the selected line up and down
    bool headersMove = false;         ///< a wait can be inserted before the headers
    /// A file is read field by field, ended by a comma or quotes; what was read before an error is
    /// kept, without a message. Else a file is read completely or not at all.
    bool fieldFiles = false;
    bool asksToSave = false; ///< when the panel closes while its sequence is visible
    Wait wait;
    Loop loop;
    Stops stops;
    Editor editor;
    Trigger trigger;
    Place at;
};

/// Automatic reads: boxes select the buttons that are pressed.
struct AutomaticReads {
    /// A box that ticks others.
    struct Group {
        int box = 0;
        std::string title;
        BitList ticks;  ///< boxes
        BitList clears; ///< boxes that stay cleared, or are cleared with the others
    };
    /// The tooltip of a box.
    struct Note {
        int box = 0;
        std::string text;
    };

    std::string array = "AutoRead"; ///< name of the boxes
    std::string timer = "AutoReadTimer";
    int interval = 500;               ///< ms
    std::vector<ControlName> buttons; ///< one for each box, in the order of the reads
    std::vector<int> switches;        ///< boxes that turn the reads on and off
    std::vector<int> recorders;       ///< boxes that record manually sent words
    std::vector<Group> groups;
    std::vector<Note> notes;
    BitList lost; ///< boxes that are cleared when the chip cannot be reached
    Place at;

    [[nodiscard]] bool exists() const { return !buttons.empty(); }
    /// Index of the last box.
    [[nodiscard]] int last() const;
};

/// Controls of a panel whose behaviour is in parts in C++.
struct OwnControl {
    enum class Kind : std::uint8_t { Label, Button, Box, Frame, Entry, Options, List, Bar };

    Kind kind = Kind::Label;
    ControlName name;               ///< the first one of options
    std::vector<std::string> texts; ///< the caption; one for each option or line of a list
    std::string prompt;             ///< text of a list before anything is chosen
    int selected = -1;              ///< option at the start, -1 for none
    int least = 0;                  ///< of a bar
    int most = 0;
    std::optional<std::uint32_t> colour; ///< of a label
    bool hidden = false;                 ///< at the start
    bool disabled = false;
    Place at;
};

/// A page, or the window of a companion form, with controls that parts in C++ create, in titled
/// groups; on a page of registers the groups follow those of the fields.
struct Sheet {
    /// Controls side by side; a leading label is the caption of the others.
    struct Row {
        std::string caption;
        std::vector<ControlRange> controls;
    };
    struct Group {
        std::string title;
        ControlName frame; ///< around it; its caption is then the title
        std::vector<Row> rows;
        ControlName state; ///< label below them whose colour shows the state
        int column = 0;    ///< of the sheet, from the left
    };
    /// A button whose effect cannot be undone: the window requires a second press.
    struct Confirmation {
        ControlName button;
        ControlName selected; ///< option for which this text applies; any if empty
        std::string text;     ///< effect of the second press
    };

    std::string page;  ///< content of the outer page, or title of a page of registers
    std::string title; ///< beside all pages
    std::string form;  ///< with the controls, if it is not the panel
    std::vector<Group> groups;
    std::vector<Confirmation> confirmations; ///< the first one that applies is used
    bool hasReads = false;                   ///< the automatic reads are below
    bool stacked = false; ///< on a page of registers: the groups are below each other

    // Beside the rows of a page of registers.
    ControlName entry;       ///< text box before a write row shared by registers
    ControlName besideWrite; ///< button after it, or after Write
    ControlName bitsButton;  ///< before a further row of labels
    std::vector<ControlRange> bits;
    std::vector<ControlName> buttons; ///< below the rows
    Place at;
};

/// A tab of the panel: shows the pages of registers, the flags, the sequence, or a page written
/// in C++.
struct OuterPage {
    std::string title;
    std::string shows;
};

/// A companion form made from the description: registers, views and buttons refer to it by `form`.
/// It is hidden when the panel closes.
struct Companion {
    std::string form;
    std::string caption; ///< of its window
    ControlName button;  ///< of the panel; shows the form
    std::string title;   ///< of that button
    bool marked = false; ///< the button requires the panel's marker file
};

/// The layout of the panel's form.
struct PanelLayout {
    /// How long the words of the main window have the shape of the chip's words. While in front,
    /// the panel's own words use the shape of the session at that moment.
    enum class Holds : std::uint8_t { WhileOpen, WhileInFront };

    std::string form;    ///< name of the form
    std::string caption; ///< of its window
    ControlName outerTabs;
    ControlName registerTabs;
    std::vector<OuterPage> pages;
    int firstPage = 0;                   ///< index of the page shown first
    std::vector<std::string> parts;      ///< names of those written in C++
    std::vector<std::string> companions; ///< companion forms; those in C++ close with it
    std::vector<Companion> described;    ///< those of them made from the description
    std::vector<Sheet::Row> lastWord;    ///< labels instead of the last word sent
    std::vector<ControlRange> texts;     ///< labels beside it
    std::vector<ControlRange> copies;    ///< have the effect of others, and no widget
    std::string marker;                  ///< file whose presence shows hidden controls
    /// Session variable that is 1 while the panel defines the shape of words; empty for none.
    std::string active;
    Holds holds = Holds::WhileOpen;
    bool leavesType = false;   ///< words use the current SPI type, not the chip's
    bool showsType = false;    ///< the configuration dialog shows the panel's type
    bool unloadsAtEnd = false; ///< the end of the program unloads it
    Place at;

    /// A companion form made from the description, by name; null if there is none.
    [[nodiscard]] const Companion* findDescribed(std::string_view name) const;
};

} // namespace bitlux::chips
