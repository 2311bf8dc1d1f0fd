#pragma once

#include "gui/widgets/binder.h"
#include "gui/window/word_history.h"

#include <QLineEdit>

namespace bitlux::gui {

/// The field of a word to send, bound to its control. Words may be pasted as "0xA5_C3" or "A5 C3";
/// the control receives only the digits. After Enter the word is selected, so that the next one
/// replaces it; Up and Down recall the words that were sent.
class WordEntry : public QLineEdit {
public:
    WordEntry(forms::TextBox& control, Binder& binder, QWidget* parent);

    /// The word in the field is sent.
    void sending() { history_.add(control_.text()); }

protected:
    void keyPressEvent(QKeyEvent* event) override;

private:
    forms::TextBox& control_;
    WordHistory history_;
    Subscription enterTaken_;
};

} // namespace bitlux::gui
