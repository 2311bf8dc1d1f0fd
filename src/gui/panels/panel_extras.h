#pragma once

#include "gui/panels/panel_widgets.h"
#include "panels/common/panel_form.h"

#include <functional>
#include <map>
#include <string>
#include <vector>

namespace bitlux::gui {

/// Makes a widget of a panel's window, when its page is first shown.
using MakeWidget = std::function<QWidget*(QWidget* parent)>;

/// What parts add to a page of registers.
struct PageExtras {
    /// A further row of bits, from bit 0 on, and the button in front of it.
    struct Row {
        chips::ControlName button;
        std::vector<forms::Label*> bits;
    };

    MakeWidget entry;                        ///< before a write row that registers share
    chips::ControlName besideWrite;          ///< button after it, or after Write
    std::vector<Row> rows;                   ///< below those of the registers
    std::vector<chips::ControlName> buttons; ///< below the rows
    std::vector<MakeWidget> groups;          ///< after the groups of the fields
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
    std::vector<MakeWidget> reads;        ///< beside the buttons that read at once
    std::vector<MakeWidget> besideTabs;

    std::map<std::string, PageExtras, std::less<>> registerPages; ///< by their titles
    std::map<std::string, MakeWidget, std::less<>> pages;         ///< by OuterPage::shows
    SequenceExtras sequence;
    /// Controls that are left out, since visible ones beside them or above all pages do the same.
    std::vector<const forms::Control*> copies;
};

/// The extras of all parts of a form. The form outlives the widgets that are made with them.
[[nodiscard]] PanelExtras extrasOf(PanelForm& form, const PanelWidgets& widgets);

} // namespace bitlux::gui
