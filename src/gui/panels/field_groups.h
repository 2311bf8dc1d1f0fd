#pragma once

#include "gui/panels/group_flow.h"
#include "gui/panels/panel_places.h"
#include "gui/panels/panel_widgets.h"

namespace bitlux::gui {

/// Makes titled groups of the controls that choose the values of fields, and of commands.
class FieldGroups {
public:
    /// The groups become children of `parent` in the layout `flow`.
    FieldGroups(const PanelWidgets& widgets, QWidget* parent, GroupFlow& flow)
        : widgets_(widgets), parent_(parent), flow_(flow) {}

    /// A group for each field; all check boxes in one.
    void add(const chips::Register& shown);
    /// A register without rows, as one group with its buttons.
    void addWhole(const chips::Register& shown, const QString& title);
    /// Actions by their headings.
    void add(const Actions& actions);

private:
    [[nodiscard]] QVBoxLayout* makeGroup(const QString& title, QGroupBox*& box);
    void addField(const chips::Field& field);
    void addBoxes(const chips::Register& shown);
    void addActions(const std::string& group, const Actions& actions);
    void addButtons(QVBoxLayout& column, const ControlRef& first, const ControlRef& second,
                    const QString& about, QWidget* box);
    void fill(QVBoxLayout& column, const chips::Field& field, QWidget* box);
    void addOptions(QVBoxLayout& column, const chips::Field& field, QWidget* box) const;
    [[nodiscard]] QComboBox* makeList(const chips::Field& field, QWidget* box) const;
    void addNotes(QVBoxLayout& column, const chips::Field& field, QWidget* box) const;

    PanelWidgets widgets_;
    QWidget* parent_;
    GroupFlow& flow_;
};

} // namespace bitlux::gui
