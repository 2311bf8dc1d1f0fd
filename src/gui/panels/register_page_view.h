#pragma once

#include "gui/panels/panel_extras.h"
#include "gui/panels/panel_places.h"

#include <QWidget>

class QVBoxLayout;

namespace bitlux::gui {

class FieldGroups;

/// A page of registers and commands, made from the description of the chip. Of a single register
/// the bits to write and the bits read stay visible, and the choices scroll below them; of several
/// registers, or one with many rows, everything scrolls. A page without bits is a sheet of titled
/// groups.
class RegisterPageView : public QWidget {
public:
    /// `page` is one of Chip::registerPages.
    RegisterPageView(const chips::Chip& chip, const std::string& page, const PageExtras& extras,
                     const PanelWidgets& widgets, QWidget* parent);

private:
    void addSingle(const chips::Register& shown);
    void addSheet(const std::vector<Registers>& sections);
    void addSection(const Registers& registers, QVBoxLayout& column, QWidget* parent);
    void addGuests(QVBoxLayout& column, QWidget* parent);
    /// The groups at the end of a page: commands, and extras of the parts.
    void addRest(QVBoxLayout& column, QWidget* parent);
    /// Whether it is one register, whose rows leave enough height for the choices on a small
    /// screen.
    [[nodiscard]] bool keepsRowsInSight(const Registers& registers) const;
    [[nodiscard]] bool hasRows(const Registers& registers) const;

    const chips::Chip& chip_;
    const std::string page_;
    const PageExtras& extras_;
    PanelWidgets widgets_;
};

} // namespace bitlux::gui
