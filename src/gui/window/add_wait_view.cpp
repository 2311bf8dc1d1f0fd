#include "gui/window/add_wait_view.h"

#include <QFormLayout>
#include <QHBoxLayout>

namespace bitlux::gui {

AddWaitView::AddWaitView(AddWaitForm& form, Binder& binder, QWidget* parent)
    : FormDialog(form, form.cmdCancel, binder, parent),
      time_(binder.make<QLineEdit>(form.txtWaitTime, this)) {
    auto* layout = new QFormLayout(this);
    auto* time = new QHBoxLayout;
    time_->setMinimumWidth(fontMetrics().averageCharWidth() * 20);
    time->addWidget(time_, 1);
    auto* units = binder.make<QComboBox>(form.cmbUnits, this);
    units->setAccessibleName("Unit");
    time->addWidget(units);
    layout->addRow("&Wait:", time);
    qobject_cast<QLabel*>(layout->labelForField(time))->setBuddy(time_);
    layout->addRow(makeButtons({&form.cmdOK, &form.cmdCancel}));
}

void AddWaitView::showEvent(QShowEvent* event) {
    time_->setFocus();
    time_->selectAll();
    FormDialog::showEvent(event);
}

} // namespace bitlux::gui
