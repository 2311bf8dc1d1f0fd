#pragma once

#include "gui/binder.h"
#include "platform/forms/form.h"

#include <initializer_list>

#include <QDialog>

namespace bitlux::gui {

/// The window of a form that is a dialog. Escape and closing it do what its Cancel button does.
class FormDialog : public QDialog {
public:
    FormDialog(forms::Form& form, forms::Button& cancel, Binder& binder, QWidget* parent);

    /// Shows or hides this, as the form is.
    void follow();

protected:
    /// A row of buttons, of which Enter presses the first where no control takes it.
    QWidget* makeButtons(std::initializer_list<forms::Button*> controls);

    void changeEvent(QEvent* event) override;
    void closeEvent(QCloseEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;

private:
    forms::Form& form_;
    forms::Button& cancel_;
    Binder& binder_;
};

} // namespace bitlux::gui
