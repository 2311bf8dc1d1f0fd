#pragma once

#include "chips/description.h"
#include "panels/common/panel_controls.h"

#include <cstdint>
#include <string>

namespace bitlux {

/// The options, boxes and lists of the fields of registers: a second view of the bits in a
/// register's row. A choice lights bits, and bits that change select the matching choice. A
/// register without a row has the value that its choices make.
class FieldChoices {
public:
    /// `controls` outlives it.
    explicit FieldChoices(PanelControls& controls) : controls_(controls) {}

    /// Makes the control of a field; `owner` and `field` outlive the controls.
    void add(const chips::Register& owner, const chips::Field& field);

    /// Selects the choices that match a value, of the fields that follow the row.
    void follow(const chips::Register& changed, std::uint64_t value) const;
    /// The same with the value of a row, for the fields that contain a bit.
    void follow(const chips::Register& changed, const LabelRow& row, int bit) const;
    /// The value that the choices of a register make.
    [[nodiscard]] std::uint64_t value(const chips::Register& of) const;
    /// Adds the choices that need the marker file to a list, once.
    void showMarked(const chips::Field& field) const;

private:
    void addOptions(const chips::Register& owner, const chips::Field& field);
    void addGate(const chips::Field& field);
    void addBox(const chips::Register& owner, const chips::Field& field);
    void addList(const chips::Register& owner, const chips::Field& field);
    void chooseByText(const chips::Register& owner, const chips::Field& field,
                      const std::string& text) const;
    /// Sets the bits of a choice in the row, if there is one.
    void choose(const chips::Register& owner, const chips::Field& field, std::uint64_t code) const;
    void select(const chips::Field& field, std::uint64_t value) const;
    [[nodiscard]] bool counts(const chips::Field& field) const;
    [[nodiscard]] std::uint64_t codeOf(const chips::Field& field) const;

    PanelControls& controls_;
};

} // namespace bitlux
