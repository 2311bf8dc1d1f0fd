#include "gui/quick_command_row.h"

#include <QHBoxLayout>

namespace bitlux::gui {

QuickCommandRow::QuickCommandRow(CommandLists& commands, Binder& binder, QWidget* parent)
    : QWidget(parent) {
    auto* row = new QHBoxLayout(this);
    row->setContentsMargins(0, 0, 0, 0);
    auto* title = new QLabel("&Quick Command:", this);
    auto* names = binder.make<QComboBox>(commands.cmbMasterQCList, this);
    title->setBuddy(names);
    row->addWidget(title);
    row->addWidget(names, 1);
}

} // namespace bitlux::gui
