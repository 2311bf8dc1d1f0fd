#pragma once

#include "gui/binder.h"
#include "panels/zt72518/sequencer.h"

#include <QWidget>

class QGridLayout;

namespace bitlux::gui {

/// The page of the watchdog that the dongle serves, and of the automatic reads.
class WatchdogView : public QWidget {
public:
    WatchdogView(zt72518::Sequencer& sequencer, Binder& binder, QWidget* parent);

private:
    QWidget* makeService();
    QWidget* makePulse();
    QWidget* makeReads();
    QComboBox* makeChoice(int choice, const QString& prompt, const QString& name, QWidget* parent);
    void addCommand(QGridLayout& grid, int row, int button, QWidget* parent);

    zt72518::Watchdog& watchdog_;
    zt72518::AutoReads& reads_;
    Binder& binder_;
};

} // namespace bitlux::gui
