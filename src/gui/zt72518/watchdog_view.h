#pragma once

#include "gui/binder.h"
#include "panels/common/auto_reads.h"
#include "panels/zt72518/watchdog.h"

#include <QWidget>

class QGridLayout;

namespace bitlux::gui {

/// The page of the watchdog that the dongle serves, and of the automatic reads.
class WatchdogView : public QWidget {
public:
    /// `reads` is null in a panel that has none.
    WatchdogView(zt72518::Watchdog& watchdog, AutoReads* reads, Binder& binder, QWidget* parent);

private:
    QWidget* makeService();
    QWidget* makePulse();
    QComboBox* makeChoice(int choice, const QString& prompt, const QString& name, QWidget* parent);
    void addCommand(QGridLayout& grid, int row, int button, QWidget* parent);

    zt72518::Watchdog& watchdog_;
    Binder& binder_;
};

} // namespace bitlux::gui
