#include "gui/flags_view.h"

#include "gui/sheet.h"

namespace bitlux::gui {

namespace chip = oldchips::zt72518;

namespace {

constexpr int columns = 3;

} // namespace

FlagsView::FlagsView(const PanelWidgets& widgets, QWidget* parent)
    : QWidget(parent), widgets_(widgets) {
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    auto* sheet = new Sheet(this);
    grid_ = new QGridLayout(sheet->widget());
    grid_->setContentsMargins(0, 0, 0, 0);
    grid_->setVerticalSpacing(0);
    grid_->setHorizontalSpacing(4);
    grid_->setColumnStretch(columns - 1, 1);
    addTitle("Low views");
    for (int i = 0; const chip::FlagRow& row : chip::lowFlagRows) {
        addRow(row, {"Cm_RFl", i}, {"Seq_RFl", i});
        ++i;
    }
    addTitle("High views");
    for (int i = 0; const chip::FlagRow& row : chip::highFlagRows) {
        // The last one appends by a button of the low views.
        const bool isLast = i + 1 == static_cast<int>(chip::highFlagRows.size());
        addRow(row, {"Cm_RFh", i},
               isLast ? oldchips::ControlName{"Seq_RFl", static_cast<int>(chip::lowFlagRows.size())}
                      : oldchips::ControlName{"Seq_RFh", i});
        ++i;
    }
    grid_->setRowStretch(grid_->rowCount(), 1);
    layout->addWidget(sheet);
}

void FlagsView::addTitle(const QString& text) {
    auto* title = new QLabel(text, grid_->parentWidget());
    QFont bold = title->font();
    bold.setBold(true);
    title->setFont(bold);
    title->setMargin(2);
    grid_->addWidget(title, grid_->rowCount(), 0, 1, columns);
}

void FlagsView::addRow(const chip::FlagRow& row, const oldchips::ControlName& read,
                       const oldchips::ControlName& append) {
    const int line = grid_->rowCount();
    QWidget* parent = grid_->parentWidget();
    RowButton* reads = widgets_.rowButton(read, parent, "flags");
    reads->setRoomFor(rowButtonRoom);
    grid_->addWidget(reads, line, 0);
    RowButton* appends = widgets_.rowButton(append, parent);
    appends->setRoomFor(appendButtonRoom);
    grid_->addWidget(appends, line, 1);
    grid_->addWidget(widgets_.row(row.labels, BitRow::Use::Shown, parent, row.firstLabel), line, 2);
}

} // namespace bitlux::gui
