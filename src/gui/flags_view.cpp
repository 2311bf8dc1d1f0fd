#include "gui/flags_view.h"

#include <QScrollArea>

namespace bitlux::gui {

namespace chip = chips::zt72518;

FlagsView::FlagsView(const PanelWidgets& widgets, QWidget* parent)
    : QWidget(parent), widgets_(widgets) {
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    auto* scroll = new QScrollArea(this);
    scroll->setWidgetResizable(true);
    scroll->setFrameShape(QFrame::NoFrame);
    scroll->setFocusPolicy(Qt::NoFocus);
    auto* sheet = new QWidget(scroll);
    grid_ = new QGridLayout(sheet);
    grid_->setContentsMargins(0, 0, 0, 0);
    grid_->setVerticalSpacing(0);
    grid_->setColumnStretch(2, 1);
    for (int i = 0; const chip::FlagRow& row : chip::lowFlagRows) {
        addRow(row, {"Cm_RFl", i}, {"Seq_RFl", i});
        ++i;
    }
    for (int i = 0; const chip::FlagRow& row : chip::highFlagRows) {
        // The last one appends by a button of the low views.
        const bool isLast = i + 1 == static_cast<int>(chip::highFlagRows.size());
        addRow(row, {"Cm_RFh", i},
               isLast ? chips::ControlName{"Seq_RFl", static_cast<int>(chip::lowFlagRows.size())}
                      : chips::ControlName{"Seq_RFh", i});
        ++i;
    }
    grid_->setRowStretch(grid_->rowCount(), 1);
    scroll->setWidget(sheet);
    layout->addWidget(scroll);
}

void FlagsView::addRow(const chip::FlagRow& row, const chips::ControlName& read,
                       const chips::ControlName& append) {
    const int line = grid_->rowCount();
    QWidget* parent = grid_->parentWidget();
    grid_->addWidget(widgets_.button(read, parent), line, 0);
    grid_->addWidget(widgets_.button(append, parent), line, 1);
    grid_->addWidget(widgets_.row(row.labels, BitRow::Use::Shown, parent, row.firstLabel), line, 2);
}

} // namespace bitlux::gui
