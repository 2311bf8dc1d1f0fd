#include "gui/panels/snapshot_report_view.h"

#include "gui/desktop/theme.h"
#include "gui/widgets/window_place.h"
#include "platform/forms/form_set.h"

#include <QApplication>
#include <QClipboard>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QLabel>
#include <QPushButton>
#include <QTreeWidget>
#include <QVBoxLayout>

namespace bitlux::gui {

namespace {

constexpr int reportColumns = 3;

QString textOf(std::string_view text) {
    return QString::fromUtf8(text.data(), static_cast<qsizetype>(text.size()));
}

QString hexOf(const RegisterItem& item, const std::optional<std::uint64_t>& value) {
    return value ? "0x" + textOf(item.hexOf(*value)) : QString("-");
}

} // namespace

SnapshotReportView::SnapshotReportView(PanelForm& form, QWidget* parent)
    : QDialog(parent), form_(form), heading_(new QLabel(this)), tree_(new QTreeWidget(this)) {
    setObjectName("panel.report");
    auto* column = new QVBoxLayout(this);
    heading_->setObjectName("panel.report.heading");
    heading_->setTextFormat(Qt::PlainText);
    heading_->setWordWrap(true);
    column->addWidget(heading_);
    tree_->setObjectName("panel.report.registers");
    tree_->setAccessibleName("Registers that differ");
    tree_->setColumnCount(reportColumns);
    tree_->header()->setSectionResizeMode(QHeaderView::ResizeToContents);
    column->addWidget(tree_, 1);
    addButtons(*column);
    resize(fontMetrics().averageCharWidth() * 80, fontMetrics().height() * 24);
    openBeside(*this, *parent);
}

void SnapshotReportView::addButtons(QLayout& column) {
    auto* widget = new QWidget(this);
    auto* row = new QHBoxLayout(widget);
    row->setContentsMargins(0, 0, 0, 0);
    auto* copy = new QPushButton("C&opy", widget);
    copy->setToolTip("Copies all of this as text");
    connect(copy, &QPushButton::clicked, this, [this] {
        QApplication::clipboard()->setText(textOf(form_.snapshots.report().text()));
    });
    clear_ = new QPushButton("Clear &Marks", widget);
    clear_->setObjectName("panel.report.clear");
    clear_->setToolTip("Removes the marks from the rows of the panel");
    connect(clear_, &QPushButton::clicked, this, [this] {
        form_.set().perform(form_.name() + ".ClearMarks", [this] { form_.call("ClearMarks"); });
    });
    auto* close = new QPushButton("Close", widget);
    connect(close, &QPushButton::clicked, this, &QDialog::close);
    row->addWidget(copy);
    row->addWidget(clear_);
    row->addStretch();
    row->addWidget(close);
    for (QPushButton* any : {copy, clear_})
        any->setAutoDefault(false);
    column.addWidget(widget);
}

void SnapshotReportView::showReport() {
    const SnapshotReport& report = form_.snapshots.report();
    setWindowTitle(textOf(form_.chip().title + ": " + report.title));
    heading_->setText(textOf(report.heading));
    tree_->clear();
    tree_->setHeaderLabels({"Register", textOf(report.before), textOf(report.after)});
    for (const SnapshotDifference& any : report.lines)
        addLine(any);
    tree_->setVisible(!report.lines.empty());
    clear_->setEnabled(!report.lines.empty());
    show();
    raise();
    activateWindow();
}

void SnapshotReportView::addLine(const SnapshotDifference& difference) {
    const RegisterItem& item = *difference.item;
    auto* line = new QTreeWidgetItem(
        tree_, {textOf(item.name), hexOf(item, difference.before), hexOf(item, difference.after)});
    for (int column = 1; column < reportColumns; ++column)
        line->setFont(column, fixedFont());
    if (difference.bits() != 0)
        for (const FieldDifference& any :
             fieldDifferences(item, *difference.before, *difference.after))
            new QTreeWidgetItem(line,
                                {textOf(any.field->name), textOf(any.field->shown(any.before)),
                                 textOf(any.field->shown(any.after))});
    line->setExpanded(true);
}

} // namespace bitlux::gui
