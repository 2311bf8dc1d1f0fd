#pragma once

#include "gui/panels/panel_extras.h"
#include "gui/panels/panel_places.h"
#include "gui/panels/row_grid.h"

namespace bitlux::gui {

/// The rows of registers: one register, or several that share their write row. A view that shares
/// its row with another one, or with the written value, has its button beside that row.
class RegisterRows : public RowGrid {
public:
    RegisterRows(const chips::Chip& chip, const Registers& registers, const PageExtras& extras,
                 const PanelWidgets& widgets, QWidget* parent);

private:
    using Views = std::vector<const chips::View*>;

    void addRegister(const chips::Register& shown, const PageExtras& extras);
    void addSharing(const Registers& registers, const PageExtras& extras);
    /// The box that shows the row in hexadecimal, and the button that copies its value to the row.
    void addHexBox(const chips::Register& shown);
    /// The buttons of a register that shares its write row, before its first view.
    void addSharer(const chips::Register& shown);
    /// The button of each view that `row` shows.
    void addReads(const chips::Register& owner, const chips::Row& row, Starts& starts);
    void addViews(const chips::Register& shown, Starts starts);
    /// In the order of their rows, each with its views; without the write row.
    [[nodiscard]] std::vector<const chips::Row*> viewRows(const chips::Register& shown) const;
    [[nodiscard]] Views viewsIn(const chips::Register& owner, const chips::Row& row) const;

    const chips::Chip& chip_;
};

/// As "MUX at 0x00".
[[nodiscard]] QString titleOf(const chips::Chip& chip, const chips::Register& shown);

} // namespace bitlux::gui
