#pragma once

#include "gui/panels/bit_row.h"
#include "gui/panels/row_button.h"
#include "gui/widgets/binder.h"
#include "gui/widgets/text.h"
#include "panels/common/panel_controls.h"

#include <string>

#include <QBoxLayout>

namespace bitlux::gui {

/// Makes the widgets of a panel.
struct PanelWidgets {
    PanelControls& controls;
    Binder& binder;

    template <typename Widget, typename Control>
    Widget* make(const ControlRef& name, QWidget* parent) const {
        return binder.make<Widget>(controls.get<Control>(name), parent);
    }

    /// Enter does not press it: the button would send a word.
    static QPushButton* button(Binder& binder, forms::Button& control, QWidget* parent) {
        auto* made = binder.make<QPushButton>(control, parent);
        made->setAutoDefault(false);
        return made;
    }
    QPushButton* button(const ControlRef& name, QWidget* parent) const {
        return button(binder, controls.get<forms::Button>(name), parent);
    }
    /// A button among many with the same caption: `about` distinguishes it, or its tooltip if that
    /// says more.
    RowButton* rowButton(const ControlRef& name, QWidget* parent, const QString& about = {}) const;

    /// A box for a short text; `name` is for assistive tools.
    QLineEdit* entry(forms::TextBox& control, const QString& prompt, const QString& name,
                     QWidget* parent) const;

    /// A heading; `scale` is that of its letters.
    static QLabel* heading(const QString& text, qreal scale, QWidget* parent);
    /// A longer text about what is above it.
    static QLabel* note(const std::string& text, QWidget* parent);
    /// Reduces the distance between the lines of a group.
    static void setLines(QVBoxLayout& group);
    /// Keeps the space of a widget while it is hidden.
    static void keepRoom(QWidget& widget);
};

/// Widths of the two buttons before a row of bits, by the texts that must fit.
inline constexpr const char* rowButtonRoom = "write command";
inline constexpr const char* appendButtonRoom = "Read Low";

} // namespace bitlux::gui
