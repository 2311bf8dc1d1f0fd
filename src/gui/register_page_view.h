#pragma once

#include "chips/register_map.h"
#include "gui/panel_widgets.h"

#include <functional>
#include <span>
#include <vector>

#include <QGridLayout>
#include <QWidget>

namespace bitlux::gui {

class GroupFlow;

/// What a page has beside what the rows of its registers tell.
struct PageParts {
    using Make = std::function<QWidget*(QWidget* parent)>;

    Make entry{};                                 ///< in front of a write row that registers share
    oldchips::ControlName besideWrite{};          ///< button behind it, or behind Write
    std::vector<forms::Label*> bits{};            ///< a further row, from bit 0 on
    oldchips::ControlName readBits{};             ///< button in front of it
    std::vector<oldchips::ControlName> buttons{}; ///< below the rows
    Make group{};                                 ///< behind the groups of the fields
};

/// The choices of a group stand close to each other.
void setLines(QVBoxLayout& group);

/// A page of registers, made from their rows in the table: the bits to write and those that were
/// read stay in sight, the choices scroll below them. It is made in the order in which it is read,
/// for the tabulator key.
class RegisterPageView : public QWidget {
public:
    RegisterPageView(std::span<const oldchips::Register> registers, const PageParts& parts,
                     const PanelWidgets& widgets, QWidget* parent);

private:
    /// In front of a row of bits.
    struct RowStart {
        QWidget* first = nullptr;
        QWidget* second = nullptr;
    };

    void addTitle(std::span<const oldchips::Register> registers);
    void addRegister(const oldchips::Register& shown, const PageParts& parts);
    /// Registers that share their write row have their Write buttons in their read rows.
    void addSharing(std::span<const oldchips::Register> registers, const PageParts& parts);
    void addView(const oldchips::Register& shown, const oldchips::ReadView& view);
    void addRow(BitRow& bits, const RowStart& start, unsigned fieldEdges);
    [[nodiscard]] RowStart buttons(const oldchips::ControlName& first,
                                   const oldchips::ControlName& second, const QString& about);
    void addButtons(const std::vector<oldchips::ControlName>& names);
    void makeChoices();
    void addOptions(const oldchips::OptionField& field);
    void addChecks(const oldchips::Register& shown);
    void addCombos(const oldchips::Register& shown);

    PanelWidgets widgets_;
    QGridLayout* rows_; ///< two buttons, and the bits beside them
    QWidget* choices_ = nullptr;
    GroupFlow* flow_ = nullptr;
};

} // namespace bitlux::gui
