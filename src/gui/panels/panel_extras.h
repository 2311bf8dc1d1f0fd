#pragma once

#include "gui/panels/panel_widgets.h"
#include "panels/common/panel_form.h"

#include <functional>
#include <map>
#include <string>
#include <vector>

namespace bitlux::gui {

/// Makes a widget for some place of a panel's window, when that is first looked at.
using MakeWidget = std::function<QWidget*(QWidget* parent)>;

/// What parts add to a page of registers.
struct PageExtras {
    /// A further row of bits, from bit 0 on, and the button in front of it.
    struct Row {
        chips::ControlName button;
        std::vector<forms::Label*> bits;
    };

    MakeWidget entry;                        ///< in front of a write row that registers share
    chips::ControlName besideWrite;          ///< button behind it, or behind Write
    std::vector<Row> rows;                   ///< below those of the registers
    std::vector<chips::ControlName> buttons; ///< below the rows
    std::vector<MakeWidget> groups;          ///< behind the groups of the fields
};

/// What parts add to the page of the sequence.
struct SequenceExtras {
    std::vector<MakeWidget> groups; ///< below the other groups
};

/// What the parts of a panel add to its window.
struct PanelExtras {
    // Above all pages.
    forms::Frame* variantFrame = nullptr; ///< around the choice of the variant
    std::vector<MakeWidget> variants;     ///< beside it
    std::vector<MakeWidget> reads;        ///< beside what reads at once
    std::vector<MakeWidget> besideTabs;

    std::map<std::string, PageExtras, std::less<>> registerPages; ///< by their titles
    std::map<std::string, MakeWidget, std::less<>> pages;         ///< by OuterPage::shows
    SequenceExtras sequence;
    /// Whatever these do, others do as well that stand beside them or above all pages.
    std::vector<const forms::Control*> copies;
};

/// What the parts of a form add. The form outlives whatever is made with it.
[[nodiscard]] PanelExtras extrasOf(PanelForm& form, const PanelWidgets& widgets);

} // namespace bitlux::gui
