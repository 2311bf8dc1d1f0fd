#pragma once

#include "chips/description.h"
#include "panels/common/field_choices.h"
#include "panels/common/panel_controls.h"
#include "panels/common/panel_words.h"

#include <cstdint>
#include <functional>
#include <string>

namespace bitlux {

/// Makes the controls and handlers of a chip's registers and commands from its description.
///
/// The lit labels of the write row are the register's value; options, boxes and lists are a second
/// view of it (FieldChoices). Write sends it, >SEQ appends it to the sequence, the read buttons
/// show a view in its row.
///
/// It makes those of the panel, or of one companion form. Further behaviour of a register's control
/// is added by PanelControls::onClick.
class RegisterPages {
public:
    /// Adds a line to the end of the sequence.
    using Append = std::function<void(const std::string& name, const std::string& value)>;

    /// All outlive it. `form` names the companion form; empty for the panel.
    RegisterPages(const chips::Chip& chip, PanelControls& controls, PanelWords& words,
                  Append append, std::string form = {});

    /// The value of a register.
    [[nodiscard]] std::uint64_t value(const chips::Register& of) const;
    /// Writes the value, and shows the answer if the description says so.
    void write(const chips::Register& target);
    /// Reads a view into its row; no effect if the variant lacks it.
    void read(const chips::View& view);
    /// The chosen variant has it.
    [[nodiscard]] bool isThere(const chips::View& view) const;
    /// Shows a value in the row of a view.
    void show(const chips::View& view, std::uint64_t value) const;
    /// Makes a value that of a register, in its row and its choices.
    void adopt(const chips::Register& target, std::uint64_t value) const;
    /// Executes a command as its button does.
    void execute(const chips::Command& command);
    /// The marker file of the panel exists: lists show all their choices from now on.
    void showMarked() const;
    /// The word that reads a view.
    [[nodiscard]] std::string tooltip(const chips::View& view) const { return words_.text(view); }
    void append(const std::string& name, const std::string& value) const { append_(name, value); }

    /// The user has written a register with this value.
    std::function<void(const chips::Register& target, std::uint64_t value)> written =
        [](const chips::Register&, std::uint64_t) {};

private:
    void send(const chips::Register& target, std::uint64_t value);
    void add(const chips::Register& added);
    void addRegister(const chips::Register& added);
    void addWriteRow(const chips::Register& added);
    void addView(const chips::View& view);
    void addCommand(const chips::Command& command);
    [[nodiscard]] std::string tooltip(const chips::Command& command) const;
    void addButton(const ControlRef& name, const std::string& caption, const std::string& tooltip,
                   PanelControls::Action action);
    void addAppend(const chips::Line& line, PanelControls::Action action);
    void addTextLabel(const chips::View& view);
    void showText(const chips::View& view) const;
    [[nodiscard]] std::string lineValue(const chips::Register& of) const;
    [[nodiscard]] const chips::View* replyOf(const chips::Register& of) const;

    const chips::Chip& chip_;
    PanelControls& controls_;
    PanelWords& words_;
    Append append_;
    std::string form_;
    FieldChoices choices_;
};

} // namespace bitlux
