#pragma once

#include "gui/widgets/form_dialog.h"
#include "sending/save_batch_form.h"

namespace bitlux::gui {

/// The window of frmSaveBatch.
class SaveBatchView : public FormDialog {
public:
    SaveBatchView(SaveBatchForm& form, Binder& binder, QWidget* parent);

protected:
    void showEvent(QShowEvent* event) override;

private:
    QLineEdit* name_;
};

} // namespace bitlux::gui
