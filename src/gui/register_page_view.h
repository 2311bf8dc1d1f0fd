#pragma once

#include "chips/register_map.h"
#include "gui/panel_widgets.h"

#include <span>

#include <QVBoxLayout>
#include <QWidget>

namespace bitlux::gui {

/// A page of registers, made from their rows in the table: the bits to write and those that were
/// read stay in sight, the choices scroll below them.
class RegisterPageView : public QWidget {
public:
    RegisterPageView(std::span<const chips::Register> registers, const PanelWidgets& widgets,
                     QWidget* parent);

    /// Behind the Write and >SEQ buttons of the last register.
    [[nodiscard]] QHBoxLayout& writeButtons() { return *writeButtons_; }
    /// Above and below what the tables give; parents of what is added.
    [[nodiscard]] QVBoxLayout& rows() { return *rows_; }
    void addChoice(QWidget* group);
    [[nodiscard]] QWidget* choiceParent() { return choices_; }

private:
    void addWriteRow(const chips::Register& shown);
    void addWriteButtons(const chips::Register& shown);
    void addView(const chips::Register& shown, const chips::ReadView& view);
    void addOptions(const chips::OptionField& field);
    void addChecks(const chips::Register& shown);
    void addCombos(const chips::Register& shown);
    void makeChoices();

    PanelWidgets widgets_;
    QVBoxLayout* rows_;
    QHBoxLayout* writeButtons_ = nullptr;
    QWidget* choices_;
    QVBoxLayout* choiceRows_;
    QHBoxLayout* lastChoices_ = nullptr; ///< groups that stand side by side
    int room_ = 0;                       ///< that is left beside them
};

} // namespace bitlux::gui
