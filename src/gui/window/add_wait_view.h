#pragma once

#include "gui/widgets/form_dialog.h"
#include "sending/add_wait_form.h"

namespace bitlux::gui {

/// The window of frmAddWait.
class AddWaitView : public FormDialog {
public:
    AddWaitView(AddWaitForm& form, Binder& binder, QWidget* parent);

protected:
    void showEvent(QShowEvent* event) override;

private:
    QLineEdit* time_;
};

} // namespace bitlux::gui
