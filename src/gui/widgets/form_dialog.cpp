#include "gui/widgets/form_dialog.h"

#include "platform/forms/form_set.h"

#include <utility>

#include <QCloseEvent>
#include <QHBoxLayout>
#include <QKeyEvent>

namespace bitlux::gui {

FormDialog::FormDialog(forms::Form& form, std::function<void()> leave, Binder& binder,
                       QWidget* parent)
    : QDialog(parent), form_(form), leave_(std::move(leave)), binder_(binder) {
    setWindowTitle(QString::fromStdString(form.caption()));
    formGoing_ = form.set().formGoing.follow([this](const forms::Form& going) {
        if (&going == &form_)
            gone_ = true;
    });
}

void FormDialog::follow() {
    setVisible(form_.visible());
    if (form_.visible()) {
        raise();
        activateWindow();
    }
}

QWidget* FormDialog::makeButtons(std::initializer_list<forms::Button*> controls) {
    auto* row = new QWidget(this);
    auto* buttons = new QHBoxLayout(row);
    buttons->setContentsMargins(0, 0, 0, 0);
    buttons->addStretch();
    for (forms::Button* control : controls) {
        auto* button = binder_.make<QPushButton>(*control, row);
        button->setAutoDefault(control == *controls.begin());
        button->setMinimumWidth(button->sizeHint().width() + 16);
        buttons->addWidget(button);
    }
    return row;
}

void FormDialog::changeEvent(QEvent* event) {
    QDialog::changeEvent(event);
    if (event->type() == QEvent::ActivationChange && isActiveWindow() && form_.visible())
        form_.set().activate(form_);
}

void FormDialog::closeEvent(QCloseEvent* event) {
    leave_();
    event->setAccepted(gone_ || !form_.visible()); // a form that refused to close stays visible
}

void FormDialog::keyPressEvent(QKeyEvent* event) {
    if (event->key() == Qt::Key_Escape)
        leave_();
    else
        QDialog::keyPressEvent(event);
}

} // namespace bitlux::gui
