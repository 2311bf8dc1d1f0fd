#include "gui/window/quick_command_row.h"

#include <QHBoxLayout>

namespace bitlux::gui {

QuickCommandRow::QuickCommandRow(MainForm& form, Binder& binder, QWidget* parent)
    : QWidget(parent) {
    auto* row = new QHBoxLayout(this);
    row->setContentsMargins(0, 0, 0, 0);
    auto* title = new QLabel("&Quick Command:", this);
    auto* names = binder.make<QComboBox>(form.commands.cmbMasterQCList, this);
    names->lineEdit()->setPlaceholderText("Enter Command Name");
    title->setBuddy(names);
    row->addWidget(title);
    row->addWidget(names, 1);
    row->addWidget(binder.make<QPushButton>(form.quickCommands.cmdSaveQC, this));
    row->addWidget(binder.make<QPushButton>(form.quickCommands.cmdDeleteQC, this));
}

} // namespace bitlux::gui
