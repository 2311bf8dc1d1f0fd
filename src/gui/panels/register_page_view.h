#pragma once

#include "gui/panels/panel_extras.h"
#include "gui/panels/panel_places.h"

#include <QWidget>

class QVBoxLayout;

namespace bitlux::gui {

class FieldGroups;

/// A page of registers and commands, made from the description of the chip. Of a single register
/// the bits to write and those that were read stay in sight, and the choices scroll below them; of
/// several, and of one with many rows, all scrolls. What has no bits at all stands on a sheet of
/// titled groups.
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
    /// The groups of what a page ends with: commands, and what parts add.
    void addRest(QVBoxLayout& column, QWidget* parent);
    /// It is one register, whose rows leave room for the choices on a small screen.
    [[nodiscard]] bool keepsRowsInSight(const Registers& registers) const;
    [[nodiscard]] bool hasRows(const Registers& registers) const;

    const chips::Chip& chip_;
    const std::string page_;
    const PageExtras& extras_;
    PanelWidgets widgets_;
};

} // namespace bitlux::gui
