#pragma once

#include "config/configure_dialog.h"

#include <vector>

#include <QComboBox>
#include <QLabel>

namespace bitlux::gui {

/// Marks the fields of the configuration dialog whose pins clash, visibly and for assistive tools,
/// and says below them which lines share a pin.
class PinMarks {
public:
    explicit PinMarks(const ConfigureDialog& form) : form_(form) {}

    /// Adds a field.
    void add(const forms::ComboBox& control, QComboBox& field);
    /// Makes the note of a page, which lists the clashes.
    QLabel* makeNote(QWidget* parent);
    /// Updates marks and notes.
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
