#include "gui/widgets/confirm_button.h"

#include <utility>

#include <QApplication>

namespace bitlux::gui {

ConfirmButton::ConfirmButton(Question question, QWidget* parent)
    : QPushButton(parent), question_(std::move(question)), timeOut_(this), doubleClick_(this) {
    setAutoDefault(false); // Enter in another field must not press it
    timeOut_.setSingleShot(true);
    timeOut_.setInterval(timeOut);
    timeOut_.setObjectName("timeOut");
    doubleClick_.setSingleShot(true);
    doubleClick_.setObjectName("doubleClick");
    QObject::connect(&timeOut_, &QTimer::timeout, this, [this] { rest(); });
}

void ConfirmButton::setCaption(const QString& caption) {
    caption_ = caption;
    if (asked_.isEmpty())
        setText(caption_);
}

bool ConfirmButton::pressedAgain() {
    if (doubleClick_.isActive())
        return false;
    const QString question = question_();
    if (asked_ != question) {
        ask(question);
        return false;
    }
    rest();
    return true;
}

void ConfirmButton::focusOutEvent(QFocusEvent* event) {
    QPushButton::focusOutEvent(event);
    rest();
}

void ConfirmButton::ask(const QString& question) {
    asked_ = question;
    setText(asked_);
    QFont bold = font();
    bold.setBold(true);
    setFont(bold);
    timeOut_.start();
    doubleClick_.start(QApplication::doubleClickInterval());
}

void ConfirmButton::rest() {
    if (asked_.isEmpty())
        return;
    timeOut_.stop();
    asked_.clear();
    setText(caption_);
    setFont(QFont()); // the inherited font
}

} // namespace bitlux::gui
