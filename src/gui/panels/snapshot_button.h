#pragma once

#include "panels/common/panel_form.h"

#include <QPointer>
#include <QPushButton>

namespace bitlux::gui {

class SnapshotReportView;

/// The menu of a panel for snapshots of its registers. Neither it nor the window of the reports is
/// made before it is needed.
class SnapshotButton : public QPushButton {
public:
    SnapshotButton(PanelForm& form, QWidget* parent);

    /// With room for the arrow.
    [[nodiscard]] QSize sizeHint() const override;

protected:
    /// Has the arrow of a menu from the start.
    void initStyleOption(QStyleOptionButton* option) const override;

private:
    void makeMenu();
    void addEntry(const QString& text, const char* procedure);
    void showReport();

    PanelForm& form_;
    QPointer<SnapshotReportView> report_;
    Subscription reported_;
};

} // namespace bitlux::gui
