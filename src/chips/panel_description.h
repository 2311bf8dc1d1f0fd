#pragma once

#include "chips/bit_list.h"
#include "chips/control_name.h"
#include "chips/problem.h"

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

/// What a chip's file says of its panel, beside the registers: the sequence, reads that repeat, the
/// controls of parts and where they stand, pages and companion forms.
namespace bitlux::chips {

/// The button that a sequence's editor of values makes for itself.
inline constexpr std::string_view changeButton = "Cm_Change_Value";

/// How the sequence of a panel looks and behaves.
struct SequenceStyle {
    struct Column {
        std::string list;
        std::string title;
    };

    /// What a wait looks like, and how long it may be.
    struct Wait {
        std::string text = "Value"; ///< in the box at the start
        std::string timer = "Timer1";
        bool asksNumber = false; ///< any other text is refused; else it is replaced
        bool endless = false;    ///< one of 0, or of a text that is no number, has no end
    };
    struct Loop {
        std::string caption = "Loop";
        std::string start; ///< texts of the boxes at the start
        std::string stop;
        ControlName startLabel; ///< captions of the boxes, where they are there with a loop alone
        ControlName stopLabel;
        bool hides = false;   ///< without a loop its controls are hidden, not disabled
        bool endsRun = false; ///< a stop ends the run; else the lines behind the loop follow
        bool picks = false;   ///< a click on a line picks start and stop by turns
    };
    /// Two points at which a run stops until the chip resets or interrupts, or the user lets it
    /// pass; none without texts of their boxes.
    struct Stops {
        std::vector<std::string> frames; ///< captions of the two frames
        std::vector<std::string> boxes;
        std::vector<std::string> events{"Reset", "Interrupt"};
        bool acts = true; ///< else the controls are there and do nothing

        [[nodiscard]] bool exists() const { return !boxes.empty(); }
    };

    /// Edits the value of the selected line in an element of Val_loop.
    struct Editor {
        int box = 0;        ///< element; none when it is 0
        ControlName list;   ///< of a part: values that are texts of it are chosen from it
        ControlName button; ///< of a part, which calls ChangeValue; else the editor makes one

        [[nodiscard]] bool exists() const { return box > 0; }
    };
    /// The line at which the dongle gives a pulse, told in an element of Val_loop.
    struct Trigger {
        int box = 0;       ///< element; none when it is 0
        ControlName label; ///< of a part: its caption

        [[nodiscard]] bool exists() const { return box > 0; }
    };

    std::string valueTitle = "Value in Hexa";
    std::vector<Column> answers;
    int numbers = 42; ///< line numbers that are there in any case
    int boxes = 2;    ///< elements of Val_loop: start and stop of the loop, and what parts add
    std::string appendTitle = ">SEQ"; ///< of the buttons that append a line
    bool wholeWords = false;          ///< a line that writes holds the word, else the data
    bool arrowAtLine = false;         ///< at the line that is played, else at the next one
    bool moves = false;               ///< buttons move the selected line up and down
    bool headersMove = false;         ///< a wait can be put in front of the headers
    /// A file is read field by field, as a comma or quotes end them; what was read before an error
    /// stays, and nothing is said of errors. Else a file is taken whole or not at all.
    bool fieldFiles = false;
    bool asksToSave = false; ///< of a panel that goes while its sequence is in sight
    Wait wait;
    Loop loop;
    Stops stops;
    Editor editor;
    Trigger trigger;
    Place at;
};

/// Reads that repeat by themselves: boxes choose the buttons that are pressed.
struct AutomaticReads {
    /// A box that ticks others.
    struct Group {
        int box = 0;
        std::string title;
        BitList ticks;  ///< boxes
        BitList clears; ///< boxes that it leaves clear, or clears with the others
    };
    /// What has to be known of a box.
    struct Note {
        int box = 0;
        std::string text;
    };

    std::string array = "AutoRead"; ///< name of the boxes
    std::string timer = "AutoReadTimer";
    int interval = 500;               ///< ms
    std::vector<ControlName> buttons; ///< by their boxes, in the order of the reads
    std::vector<int> switches;        ///< boxes that turn the reads on and off
    std::vector<int> recorders;       ///< boxes that record what is sent by hand
    std::vector<Group> groups;
    std::vector<Note> notes;
    BitList lost; ///< boxes that are cleared when the chip is out of reach
    Place at;

    [[nodiscard]] bool exists() const { return !buttons.empty(); }
    /// Index of the last box.
    [[nodiscard]] int last() const;
};

/// Controls of a panel to which parts in C++ give their meaning.
struct OwnControl {
    enum class Kind : std::uint8_t { Label, Button, Box, Frame, Entry, Options, List, Bar };

    Kind kind = Kind::Label;
    ControlName name;               ///< of options the first one
    std::vector<std::string> texts; ///< the caption; of options and lists one for each
    std::string prompt;             ///< what a list shows before anything is chosen
    int selected = -1;              ///< option at the start, -1 for none
    int least = 0;                  ///< of a bar
    int most = 0;
    std::optional<std::uint32_t> colour; ///< of a label
    bool hidden = false;                 ///< at the start
    bool disabled = false;
    Place at;
};

/// A page, or the window of a form beside the panel, of controls that parts in C++ make, in titled
/// groups; on a page of registers the groups stand behind those of the fields.
struct Sheet {
    /// Controls side by side; a label in front is the caption of what follows.
    struct Row {
        std::string caption;
        std::vector<ControlRange> controls;
    };
    struct Group {
        std::string title;
        ControlName frame; ///< around it; its caption is the title then
        std::vector<Row> rows;
        ControlName state; ///< label below them, whose colour tells how things are
        int column = 0;    ///< of the sheet, from the left
    };
    /// A button whose effect cannot be undone: the window wants a second press of it.
    struct Confirmation {
        ControlName button;
        ControlName selected; ///< option with which this text holds; any when it is empty
        std::string text;     ///< what the second press does
    };

    std::string page;  ///< what the outer page shows, or the title of a page of registers
    std::string title; ///< beside all pages
    std::string form;  ///< that has the controls, where it is not the panel
    std::vector<Group> groups;
    std::vector<Confirmation> confirmations; ///< the first one that holds is asked
    bool hasReads = false;                   ///< the automatic reads stand below
    bool stacked = false; ///< on a page of registers: the groups stand below each other

    // Beside the rows of a page of registers.
    ControlName entry;       ///< text box in front of a write row that registers share
    ControlName besideWrite; ///< button behind it, or behind Write
    ControlName bitsButton;  ///< in front of a further row of labels
    std::vector<ControlRange> bits;
    std::vector<ControlName> buttons; ///< below the rows
    Place at;
};

/// Tabs of the panel: each shows the pages of registers, the flags, the sequence, or something that
/// is written in C++.
struct OuterPage {
    std::string title;
    std::string shows;
};

/// A form beside the panel that is made from the description: registers, views and buttons name it
/// with `form`. It is hidden when the panel goes.
struct Companion {
    std::string form;
    std::string caption; ///< of its window
    ControlName button;  ///< of the panel, which shows it
    std::string title;   ///< of that button
    bool marked = false; ///< the button wants the panel's marker file
};

/// How the panel's form is put together.
struct PanelLayout {
    /// How long the words of the main window have the shape of the chip's. In front, the panel's
    /// own words travel in whatever shape the session has then.
    enum class Holds : std::uint8_t { WhileOpen, WhileInFront };

    std::string form;    ///< name of the form
    std::string caption; ///< of its window
    ControlName outerTabs;
    ControlName registerTabs;
    std::vector<OuterPage> pages;
    int firstPage = 0;                   ///< index of the page that is shown at first
    std::vector<std::string> parts;      ///< that are written in C++, by name
    std::vector<std::string> companions; ///< forms beside the panel; those in C++ go with it
    std::vector<Companion> described;    ///< those of them that are made from the description
    std::vector<Sheet::Row> lastWord;    ///< labels in place of the word that was sent last
    std::vector<ControlRange> texts;     ///< labels beside that
    std::vector<ControlRange> copies;    ///< do what others do, and have no widget
    std::string marker;                  ///< file whose presence brings hidden things
    /// Session variable that is 1 while the panel holds the shape of words; none when it is empty.
    std::string active;
    Holds holds = Holds::WhileOpen;
    bool leavesType = false;   ///< words travel in the SPI type that is set, not in the chip's
    bool showsType = false;    ///< the configuration dialog shows the type that it holds
    bool unloadsAtEnd = false; ///< the end of the program unloads it
    Place at;

    /// A form that is made from the description, by name; null when there is none.
    [[nodiscard]] const Companion* findDescribed(std::string_view name) const;
};

} // namespace bitlux::chips
