#pragma once

#include "panels/common/panel_form.h"

#include <QDialog>

class QLabel;
class QPushButton;
class QTreeWidget;

namespace bitlux::gui {

/// The window of a panel that shows its last comparison with a snapshot, or what did not take of
/// one: registers and their fields, with both values.
class SnapshotReportView : public QDialog {
public:
    SnapshotReportView(PanelForm& form, QWidget* parent);

    /// Shows the report that the panel has now.
    void showReport();

private:
    void addButtons(QLayout& column);
    void addLine(const SnapshotDifference& difference);

    PanelForm& form_;
    QLabel* heading_;
    QTreeWidget* tree_;
    QPushButton* clear_ = nullptr;
};

} // namespace bitlux::gui
