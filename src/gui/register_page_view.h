#pragma once

#include "chips/register_map.h"
#include "gui/panel_widgets.h"

#include <initializer_list>
#include <span>

#include <QGridLayout>
#include <QVBoxLayout>
#include <QWidget>

namespace bitlux::gui {

/// A page of registers, made from their rows in the table: the bits to write and those that were
/// read stay in sight, the choices scroll below them.
class RegisterPageView : public QWidget {
public:
    RegisterPageView(std::span<const chips::Register> registers, const PanelWidgets& widgets,
                     QWidget* parent);

    /// Buttons in a row of their own.
    void addWriteButtons(std::initializer_list<chips::ControlName> names);
    /// A group behind the choices that the tables give, made with choiceParent().
    void addChoice(QWidget* group);
    [[nodiscard]] QWidget* choiceParent() { return choices_; }

private:
    void addTitle(std::span<const chips::Register> registers);
    void addRegister(const chips::Register& shown);
    /// Registers that share their write row have their Write buttons in their read rows.
    void addSharing(std::span<const chips::Register> registers);
    void addRow(std::string_view labels, BitRow::Use use,
                std::initializer_list<chips::ControlName> buttons);
    void addOptions(const chips::OptionField& field);
    void addChecks(const chips::Register& shown);
    void addCombos(const chips::Register& shown);
    void makeChoices();

    PanelWidgets widgets_;
    QGridLayout* rows_; ///< buttons, and the bits beside them
    QWidget* choices_;
    QVBoxLayout* choiceRows_;
    QHBoxLayout* lastChoices_ = nullptr; ///< groups that stand side by side
    int room_ = 0;                       ///< that is left beside them
};

} // namespace bitlux::gui
