#include "gui/window/save_batch_view.h"

#include <QFormLayout>

namespace bitlux::gui {

SaveBatchView::SaveBatchView(SaveBatchForm& form, Binder& binder, QWidget* parent)
    : FormDialog(form, form.cmdCancel, binder, parent),
      name_(binder.make<QLineEdit>(form.txtBatchName, this)) {
    auto* layout = new QFormLayout(this);
    name_->setMinimumWidth(fontMetrics().averageCharWidth() * 40);
    layout->addRow("&Name of the batch:", name_);
    layout->addRow(makeButtons({&form.cmdSave, &form.cmdCancel}));
}

void SaveBatchView::showEvent(QShowEvent* event) {
    name_->setFocus();
    name_->selectAll();
    FormDialog::showEvent(event);
}

} // namespace bitlux::gui
