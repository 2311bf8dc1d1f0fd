#include "gui/window/word_entry.h"

#include <QKeyEvent>
#include <QValidator>

namespace bitlux::gui {

namespace {

/// Removes separators from a text. A text that comes from the form stays unchanged.
class PlainWord : public QValidator {
public:
    PlainWord(const forms::TextBox& control, QObject* parent)
        : QValidator(parent), control_(control) {}

    State validate(QString& text, int& cursor) const override {
        if (text.toStdString() == control_.text())
            return Acceptable;
        QString plain;
        int plainCursor = 0;
        bool atStart = true; // of a group of digits
        for (int i = 0; i < text.size(); ++i) {
            const bool isPrefix =
                atStart && text[i] == '0' && i + 1 < text.size() && text[i + 1].toLower() == 'x';
            const bool isGap = text[i].isSpace() || text[i] == '_';
            atStart = isGap;
            if (isPrefix)
                ++i;
            else if (!isGap)
                plain += text[i];
            if (i < cursor)
                plainCursor = static_cast<int>(plain.size());
        }
        text = plain;
        cursor = plainCursor;
        return Acceptable;
    }

private:
    const forms::TextBox& control_;
};

} // namespace

WordEntry::WordEntry(forms::TextBox& control, Binder& binder, QWidget* parent)
    : QLineEdit(parent), control_(control) {
    setPlaceholderText("hexadecimal, Enter sends");
    setAccessibleDescription("Enter sends, Up and Down bring words that were sent");
    setMaxLength(1 << 20);
    setValidator(new PlainWord(control, this));
    binder.bind(control, *this);
    enterTaken_ = binder.enterTaken.follow([this, &binder](const forms::Control& taken) {
        if (&taken != &control_)
            return;
        binder.flush(); // the form may have padded the word
        selectAll();
    });
}

void WordEntry::keyPressEvent(QKeyEvent* event) {
    const bool isUp = event->key() == Qt::Key_Up;
    if ((!isUp && event->key() != Qt::Key_Down) ||
        (event->modifiers() & ~Qt::KeypadModifier) != Qt::NoModifier) {
        QLineEdit::keyPressEvent(event);
        return;
    }
    if (const auto word = isUp ? history_.earlier(control_.text()) : history_.later())
        setText(QString::fromStdString(*word));
}

} // namespace bitlux::gui
