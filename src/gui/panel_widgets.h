#pragma once

#include "gui/binder.h"
#include "gui/bit_row.h"
#include "gui/row_button.h"
#include "panels/common/panel_controls.h"

#include <QBoxLayout>

namespace bitlux::gui {

/// Makes the widgets of a panel whose controls come from tables.
struct PanelWidgets {
    PanelControls& controls;
    Binder& binder;

    template <typename Widget, typename Control>
    Widget* make(const oldchips::ControlName& name, QWidget* parent) const {
        return binder.make<Widget>(controls.get<Control>(name), parent);
    }

    /// Enter is no press of it: the button would send a word.
    static QPushButton* button(Binder& binder, forms::Button& control, QWidget* parent) {
        auto* made = binder.make<QPushButton>(control, parent);
        made->setAutoDefault(false);
        return made;
    }
    QPushButton* button(const oldchips::ControlName& name, QWidget* parent) const {
        return button(binder, controls.get<forms::Button>(name), parent);
    }
    /// A button among many with the same caption: it is told by `about`, or by its tooltip when
    /// that says more.
    RowButton* rowButton(const oldchips::ControlName& name, QWidget* parent,
                         const QString& about = {}) const;

    BitRow* row(std::string_view labels, BitRow::Use use, QWidget* parent, int first = 0) const {
        return new BitRow(controls.row(labels, first).labels(), use, binder, parent);
    }
};

/// Widths of the two buttons in front of a row of bits, by the texts that find room.
inline constexpr const char* rowButtonRoom = "write command";
inline constexpr const char* appendButtonRoom = "Read Low";

} // namespace bitlux::gui
