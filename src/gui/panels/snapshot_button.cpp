#include "gui/panels/snapshot_button.h"

#include "gui/panels/snapshot_report_view.h"
#include "platform/forms/form_set.h"

#include <QMenu>
#include <QStyleOptionButton>

namespace bitlux::gui {

SnapshotButton::SnapshotButton(PanelForm& form, QWidget* parent)
    : QPushButton("Snapshots", parent), form_(form) {
    setObjectName("panel.snapshots");
    setToolTip("Saves, compares and writes the values of all registers");
    setAutoDefault(false);
    connect(
        this, &QPushButton::pressed, this,
        [this] {
            makeMenu();
            showMenu();
        },
        Qt::SingleShotConnection);
    reported_ = form.snapshots.reported.follow([this] { showReport(); });
}

void SnapshotButton::initStyleOption(QStyleOptionButton* option) const {
    QPushButton::initStyleOption(option);
    option->features |= QStyleOptionButton::HasMenu;
}

QSize SnapshotButton::sizeHint() const {
    QSize size = QPushButton::sizeHint();
    if (menu() == nullptr) // else it is in there
        size.rwidth() += style()->pixelMetric(QStyle::PM_MenuButtonIndicator, nullptr, this);
    return size;
}

void SnapshotButton::makeMenu() {
    auto* menu = new QMenu(this);
    menu->setToolTipsVisible(true);
    setMenu(menu);
    addEntry("&Save Snapshot...", "SaveSnapshot");
    addEntry("&Compare...", "CompareSnapshot");
    addEntry("&Write Snapshot...", "WriteSnapshot");
    menu->addSeparator();
    QAction* check = menu->addAction("Check W&rites");
    check->setCheckable(true);
    check->setToolTip("Reads each register back that is written here, as far as a read changes "
                      "nothing, and marks the bits that did not take");
    connect(check, &QAction::triggered, this,
            [this](bool on) { form_.snapshots.CheckWrites = on; });
    addEntry("Clear &Marks", "ClearMarks");
    connect(menu, &QMenu::aboutToShow, this,
            [this, check] { check->setChecked(form_.snapshots.CheckWrites); });
}

void SnapshotButton::addEntry(const QString& text, const char* procedure) {
    menu()->addAction(text, this, [this, procedure] {
        form_.set().perform(form_.name() + "." + procedure,
                            [this, procedure] { form_.call(procedure); });
    });
}

void SnapshotButton::showReport() {
    if (report_ == nullptr)
        report_ = new SnapshotReportView(form_, window());
    report_->showReport();
}

} // namespace bitlux::gui
