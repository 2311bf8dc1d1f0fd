#pragma once

#include "config/configure_dialog.h"

#include <vector>

#include <QComboBox>
#include <QLabel>

namespace bitlux::gui {

/// Marks the fields of the configuration dialog whose pins clash, for the eye and for assistive
/// tools, and says under them which lines share a pin.
class PinMarks {
public:
    explicit PinMarks(const ConfigureDialog& form) : form_(form) {}

    /// A field that was made.
    void add(const forms::ComboBox& control, QComboBox& field);
    /// Where the clashes are told on a page.
    QLabel* makeNote(QWidget* parent);
    /// Brings marks and notes up to date.
    void follow();

private:
    struct Field {
        const forms::ComboBox* control;
        QComboBox* widget;
        QWidget* mark;
    };

    const ConfigureDialog& form_;
    std::vector<Field> fields_;
    std::vector<QLabel*> notes_;
};

} // namespace bitlux::gui
