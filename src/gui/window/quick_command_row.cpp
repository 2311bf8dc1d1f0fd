#include "gui/window/quick_command_row.h"

#include "gui/window/copy_menu.h"

#include <QHBoxLayout>

namespace bitlux::gui {

QuickCommandRow::QuickCommandRow(Program& program, Binder& binder, QWidget* parent)
    : QWidget(parent) {
    MainForm& form = program.mainForm();
    auto* row = new QHBoxLayout(this);
    row->setContentsMargins(0, 0, 0, 0);
    auto* title = new QLabel("&Quick Command:", this);
    auto* names = binder.make<QComboBox>(form.commands.cmbMasterQCList, this);
    names->lineEdit()->setPlaceholderText("Enter Command Name");
    addCopyMenu(*names->lineEdit(), program.copies(), [&program, names] {
        return program.copies().ofQuickCommand(names->currentText().toStdString());
    });
    title->setBuddy(names);
    row->addWidget(title);
    row->addWidget(names, 1);
    row->addWidget(binder.make<QPushButton>(form.quickCommands.cmdSaveQC, this));
    row->addWidget(binder.make<QPushButton>(form.quickCommands.cmdDeleteQC, this));
}

} // namespace bitlux::gui
