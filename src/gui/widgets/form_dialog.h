#pragma once

#include "gui/widgets/binder.h"
#include "platform/forms/form.h"

#include <functional>
#include <initializer_list>

#include <QDialog>

namespace bitlux::gui {

/// The window of a form that is a dialog. Escape and closing do what its Cancel button does.
class FormDialog : public QDialog {
public:
    FormDialog(forms::Form& form, forms::Button& cancel, Binder& binder, QWidget* parent)
        : FormDialog(
              form, [&cancel] { cancel.click(); }, binder, parent) {}
    /// `leave` is called by Escape and by closing.
    FormDialog(forms::Form& form, std::function<void()> leave, Binder& binder, QWidget* parent);

    /// Shows or hides this, like the form.
    void follow();

protected:
    /// A row of buttons. Enter presses the first one unless another control handles it.
    QWidget* makeButtons(std::initializer_list<forms::Button*> controls);

    void changeEvent(QEvent* event) override;
    void closeEvent(QCloseEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;

private:
    forms::Form& form_;
    std::function<void()> leave_;
    Binder& binder_;
    Subscription formGoing_;
    bool gone_ = false; ///< the form was destroyed and must not be used
};

} // namespace bitlux::gui
