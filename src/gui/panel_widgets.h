#pragma once

#include "gui/binder.h"
#include "gui/bit_row.h"
#include "panels/common/panel_controls.h"

#include <QBoxLayout>

namespace bitlux::gui {

/// Makes the widgets of a panel whose controls come from tables.
struct PanelWidgets {
    PanelControls& controls;
    Binder& binder;

    template <typename Widget, typename Control>
    Widget* make(const chips::ControlName& name, QWidget* parent) const {
        return binder.make<Widget>(controls.get<Control>(name), parent);
    }

    /// Enter is no press of it: the button would send a word.
    static QPushButton* button(Binder& binder, forms::Button& control, QWidget* parent) {
        auto* made = binder.make<QPushButton>(control, parent);
        made->setAutoDefault(false);
        return made;
    }
    QPushButton* button(const chips::ControlName& name, QWidget* parent) const {
        return button(binder, controls.get<forms::Button>(name), parent);
    }

    BitRow* row(std::string_view labels, BitRow::Use use, QWidget* parent, int first = 0) const {
        return new BitRow(controls.row(labels, first).labels(), use, binder, parent);
    }
};

/// A row of buttons, those that exist.
void addButtons(QBoxLayout& layout, const PanelWidgets& widgets, QWidget* parent,
                std::initializer_list<chips::ControlName> names);

} // namespace bitlux::gui
