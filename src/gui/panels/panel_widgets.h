#pragma once

#include "gui/panels/bit_row.h"
#include "gui/panels/row_button.h"
#include "gui/widgets/binder.h"
#include "panels/common/panel_controls.h"

#include <string>

#include <QBoxLayout>

namespace bitlux::gui {

[[nodiscard]] inline QString textOf(const std::string& text) {
    return QString::fromStdString(text);
}

/// Makes the widgets of a panel.
struct PanelWidgets {
    PanelControls& controls;
    Binder& binder;

    template <typename Widget, typename Control>
    Widget* make(const ControlRef& name, QWidget* parent) const {
        return binder.make<Widget>(controls.get<Control>(name), parent);
    }

    /// Enter is no press of it: the button would send a word.
    static QPushButton* button(Binder& binder, forms::Button& control, QWidget* parent) {
        auto* made = binder.make<QPushButton>(control, parent);
        made->setAutoDefault(false);
        return made;
    }
    QPushButton* button(const ControlRef& name, QWidget* parent) const {
        return button(binder, controls.get<forms::Button>(name), parent);
    }
    /// A button among many with the same caption: it is told by `about`, or by its tooltip when
    /// that says more.
    RowButton* rowButton(const ControlRef& name, QWidget* parent, const QString& about = {}) const;

    /// A box for a short text; `name` is for those who hear it.
    QLineEdit* entry(forms::TextBox& control, const QString& prompt, const QString& name,
                     QWidget* parent) const;

    /// A heading; `scale` is that of its letters.
    static QLabel* heading(const QString& text, qreal scale, QWidget* parent);
    /// A text of some length about what stands above it.
    static QLabel* note(const std::string& text, QWidget* parent);
    /// The lines of a group stand close to each other.
    static void setLines(QVBoxLayout& group);
    /// A widget that is hidden keeps its room.
    static void keepRoom(QWidget& widget);
};

/// Widths of the two buttons in front of a row of bits, by the texts that find room.
inline constexpr const char* rowButtonRoom = "write command";
inline constexpr const char* appendButtonRoom = "Read Low";

} // namespace bitlux::gui
