#include "gui/watchdog_view.h"

#include "gui/panel_widgets.h"

#include <QGridLayout>
#include <QHBoxLayout>
#include <QSlider>
#include <QVBoxLayout>

namespace bitlux::gui {

namespace {

/// Boxes of a group of reads, and the box that ticks the group.
struct ReadGroup {
    const char* title;
    std::vector<int> boxes;
    int all;
};

std::vector<int> range(int first, int last) {
    std::vector<int> result;
    for (int i = first; i <= last; ++i)
        result.push_back(i);
    return result;
}

std::vector<int> flagBoxes() {
    std::vector<int> boxes = range(23, 33);
    boxes.insert(boxes.end(), {35, 36});
    return boxes;
}

} // namespace

WatchdogView::WatchdogView(zt72518::Sequencer& sequencer, Binder& binder, QWidget* parent)
    : QWidget(parent), watchdog_(sequencer.watchdog), reads_(sequencer.autoReads), binder_(binder) {
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    auto* top = new QHBoxLayout;
    top->addWidget(makeService());
    top->addWidget(makePulse());
    layout->addLayout(top);
    layout->addWidget(makeReads());
    layout->addStretch();
}

void WatchdogView::addCommand(QGridLayout& grid, int row, int button, QWidget* parent) {
    for (const int step : {0, 1}) // the command, and its line of a sequence
        grid.addWidget(PanelWidgets::button(binder_, watchdog_.watchdog(button + step), parent),
                       row, step);
}

QWidget* WatchdogView::makeService() {
    auto* box = new QGroupBox("Watchdog served by the dongle", this);
    auto* grid = new QGridLayout(box);
    grid->setColumnStretch(0, 1);
    const std::array<const char*, 2> prompts{"Mode", "Time"};
    int row = 0;
    for (const char* prompt : prompts) {
        auto* combo = binder_.make<QComboBox>(watchdog_.wd_config(row), box);
        combo->setPlaceholderText(row == 0 ? "Choose a mode" : "Choose a time");
        combo->setAccessibleName(prompt);
        grid->addWidget(combo, row++, 0, 1, 2);
    }
    for (const int button : {0, 2, 12})
        addCommand(*grid, row++, button, box);
    auto* state = binder_.make<QLabel>(watchdog_.wd_aff(1), box);
    state->setAlignment(Qt::AlignCenter);
    state->setMargin(4);
    grid->addWidget(state, row, 0, 1, 2);
    return box;
}

QWidget* WatchdogView::makePulse() {
    auto* box = new QGroupBox("Pulse of current", this);
    auto* grid = new QGridLayout(box);
    grid->setColumnStretch(0, 1);
    int row = 0;
    grid->addWidget(binder_.make<QLabel>(watchdog_.wd_aff(2), box), row++, 0);
    auto* low = binder_.make<QComboBox>(watchdog_.wd_config(2), box);
    low->setPlaceholderText("Choose a time");
    low->setAccessibleName("WatchDog TL");
    grid->addWidget(low, row++, 0, 1, 2);
    grid->addWidget(binder_.make<QLabel>(watchdog_.wd_aff(3), box), row, 0);
    auto* high = binder_.make<QLabel>(watchdog_.wd_aff(0), box);
    high->setMinimumWidth(high->fontMetrics().horizontalAdvance("TH = 00000 ms"));
    grid->addWidget(high, row++, 1);
    auto* bar = new QSlider(Qt::Horizontal, box);
    binder_.bind(watchdog_.wd_current_time, *bar);
    bar->setAccessibleName("WatchDog TH");
    grid->addWidget(bar, row++, 0, 1, 2);
    for (const int button : {4, 6})
        addCommand(*grid, row++, button, box);
    return box;
}

QWidget* WatchdogView::makeReads() {
    auto* box = new QGroupBox("Read every 500 ms, while \"Auto reading\" is ticked above", this);
    auto* row = new QHBoxLayout(box);
    constexpr int lines = 6;
    const std::array<ReadGroup, 3> groups{{{"Registers", range(0, 16), 41},
                                           {"High views", range(17, 22), 42},
                                           {"Flags", flagBoxes(), 43}}};
    for (const ReadGroup& group : groups) {
        auto* part = new QWidget(box);
        auto* grid = new QGridLayout(part);
        grid->setContentsMargins(0, 0, 12, 0);
        grid->setVerticalSpacing(2);
        grid->addWidget(binder_.make<QCheckBox>(reads_.read_auto(group.all), part), 0, 0);
        int place = 0;
        for (const int read : group.boxes) {
            grid->addWidget(binder_.make<QCheckBox>(reads_.read_auto(read), part),
                            1 + place % lines, place / lines);
            ++place;
        }
        row->addWidget(part);
    }
    row->addStretch();
    return box;
}

} // namespace bitlux::gui
