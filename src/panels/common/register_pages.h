#pragma once

#include "chips/register_map.h"
#include "panels/common/panel_controls.h"
#include "panels/common/register_words.h"

#include <cstdint>
#include <span>
#include <string>
#include <string_view>

namespace bitlux {

/// Makes the controls and handlers of registers from their rows in a table.
///
/// The lit labels of the write row are the register's value. Options, boxes and lists are a second
/// view of it: choosing lights bits, and a click on a bit chooses what agrees with it. Write sends
/// it, >SEQ appends it to the sequence, the read buttons show a view in its row.
///
/// Whatever else a control of a register does is given to PanelControls::onClick behind it.
class RegisterPages {
public:
    /// All outlive it, the table too. Registers may share a write row.
    RegisterPages(PanelControls& controls, RegisterWords& words,
                  std::span<const oldchips::Register> table);

    /// What a register's write row holds.
    [[nodiscard]] std::uint32_t value(const oldchips::Register& of) const {
        return controls_.row(of.writeLabels).value();
    }
    /// Writes what the row holds.
    void write(const oldchips::Register& target) { words_.write(target, value(target)); }

private:
    void add(const oldchips::Register& added);
    void addWriteRow(const oldchips::Register& added);
    void addOptions(const oldchips::OptionField& field, const LabelRow& row);
    void addCheck(const oldchips::CheckBit& check, const LabelRow& row);
    void addCombo(const oldchips::ComboField& field, const LabelRow& row);
    void addView(const oldchips::Register& added, const oldchips::ReadView& shown,
                 RegisterView view);
    void addButton(const oldchips::ControlName& name, std::string_view caption,
                   const std::string& tooltip, PanelControls::Action action);
    /// Brings the choices that hold a bit into line with the row.
    void follow(const oldchips::Register& changed, int bit);

    PanelControls& controls_;
    RegisterWords& words_;
};

} // namespace bitlux
