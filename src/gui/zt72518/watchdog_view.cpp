#include "gui/zt72518/watchdog_view.h"

#include "gui/auto_reads_view.h"
#include "gui/panel_widgets.h"
#include "gui/sheet.h"

#include <QGridLayout>
#include <QHBoxLayout>
#include <QSlider>
#include <QVBoxLayout>

namespace bitlux::gui {

WatchdogView::WatchdogView(zt72518::Watchdog& watchdog, AutoReads* reads, Binder& binder,
                           QWidget* parent)
    : QWidget(parent), watchdog_(watchdog), binder_(binder) {
    auto* outer = new QVBoxLayout(this);
    outer->setContentsMargins(0, 0, 0, 0);
    auto* sheet = new Sheet(this);
    outer->addWidget(sheet);
    auto* layout = new QVBoxLayout(sheet->widget());
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(10);
    auto* top = new QHBoxLayout;
    top->addWidget(makeService(), 1);
    top->addWidget(makePulse(), 1);
    layout->addLayout(top);
    if (reads != nullptr)
        layout->addWidget(makeAutoReads(*reads, binder_, this));
    layout->addStretch();
}

/// The button of a command, and the one of its line of a sequence.
void WatchdogView::addCommand(QGridLayout& grid, int row, int button, QWidget* parent) {
    QPushButton* starts = PanelWidgets::button(binder_, watchdog_.watchdog(button), parent);
    grid.addWidget(starts, row, 0, 1, 2);
    QPushButton* appends = PanelWidgets::button(binder_, watchdog_.watchdog(button + 1), parent);
    appends->setAccessibleName(appends->text() + " " + starts->text().simplified());
    grid.addWidget(appends, row, 2);
}

QComboBox* WatchdogView::makeChoice(int choice, const QString& prompt, const QString& name,
                                    QWidget* parent) {
    auto* combo = binder_.make<QComboBox>(watchdog_.wd_config(choice), parent);
    combo->setPlaceholderText(prompt);
    combo->setAccessibleName(name);
    return combo;
}

QWidget* WatchdogView::makeService() {
    auto* box = new QGroupBox("Watchdog served by the dongle", this);
    auto* grid = new QGridLayout(box);
    grid->setColumnStretch(1, 1);
    int row = 0;
    for (const char* prompt : {"Choose a mode", "Choose a time"}) {
        auto* label = binder_.make<QLabel>(watchdog_.wd_refresh(row), box);
        grid->addWidget(label, row, 0);
        grid->addWidget(makeChoice(row, prompt, label->text(), box), row, 1, 1, 2);
        ++row;
    }
    for (const int button : {0, 2, 12})
        addCommand(*grid, row++, button, box);
    auto* state = binder_.make<QLabel>(watchdog_.wd_aff(1), box);
    state->setAlignment(Qt::AlignCenter);
    state->setMargin(4);
    grid->addWidget(state, row, 0, 1, 3);
    return box;
}

QWidget* WatchdogView::makePulse() {
    auto* box = new QGroupBox("Pulse of current", this);
    auto* grid = new QGridLayout(box);
    grid->setColumnStretch(1, 1);
    constexpr int lowTime = 2;
    auto* low = binder_.make<QLabel>(watchdog_.wd_aff(2), box);
    grid->addWidget(low, 0, 0);
    grid->addWidget(makeChoice(lowTime, "Choose a time", low->text(), box), 0, 1, 1, 2);
    auto* high = binder_.make<QLabel>(watchdog_.wd_aff(3), box);
    grid->addWidget(high, 1, 0);
    auto* bar = new QSlider(Qt::Horizontal, box);
    binder_.bind(watchdog_.wd_current_time, *bar);
    bar->setAccessibleName(high->text());
    grid->addWidget(bar, 1, 1);
    auto* time = binder_.make<QLabel>(watchdog_.wd_aff(0), box);
    time->setMinimumWidth(time->fontMetrics().horizontalAdvance("TH = 000 ms"));
    time->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
    grid->addWidget(time, 1, 2);
    int row = 2;
    for (const int button : {4, 6})
        addCommand(*grid, row++, button, box);
    grid->setRowStretch(row, 1);
    return box;
}

} // namespace bitlux::gui
