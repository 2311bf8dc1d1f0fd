#include "gui/window/log_pins_view.h"

#include <QGridLayout>
#include <QHBoxLayout>
#include <QVBoxLayout>

namespace bitlux::gui {

namespace {

constexpr int logTab = 1;
constexpr int pinsTab = 2;

} // namespace

LogPinsView::LogPinsView(MainForm& form, Binder& binder, Page page, QWidget* parent)
    : QWidget(parent), form_(form), binder_(binder), page_(page) {
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(0);
    auto* tabs = binder_.make<QTabBar>(
        single() ? form_.extraPins.TabStripLogPinsNow : form_.extraPins.TabStripLogPins, this);
    tabs->setExpanding(false);
    tabs->setDrawBase(false);
    layout->addWidget(tabs);
    auto* sheet = new QFrame(this);
    sheet->setFrameShape(QFrame::StyledPanel);
    auto* pages = new QVBoxLayout(sheet);
    pages->setContentsMargins(10, 10, 10, 10);
    auto* log = new QWidget(sheet);
    fillLog(*log);
    pins_ = new QWidget(sheet);
    binder_.bind(frame(logTab), *log);
    binder_.bind(frame(pinsTab), *pins_);
    pages->addWidget(log);
    pages->addWidget(pins_);
    layout->addWidget(sheet, 1);
    flushed_ = binder_.flushed.follow([this] { follow(); });
    follow();
}

forms::Frame& LogPinsView::frame(int tab) const {
    return (single() ? form_.log.frameLogPinsNow : form_.log.frameLogPins)(tab);
}

void LogPinsView::fillLog(QWidget& page) {
    SessionLog& log = form_.log;
    auto* row = new QHBoxLayout(&page);
    row->setContentsMargins(0, 0, 0, 0);
    auto* lines =
        binder_.make<LogView>(single() ? log.lstSessionLogSingle : log.lstSessionLogMult, &page);
    lines->setAccessibleName("Session Log");
    row->addWidget(lines, 1);
    auto* buttons = new QVBoxLayout;
    buttons->addWidget(
        binder_.make<QPushButton>(single() ? log.cmdSaveLogSingle : log.cmdSaveLogMult, &page));
    buttons->addWidget(
        binder_.make<QPushButton>(single() ? log.cmdClearLogSingle : log.cmdClearLogMult, &page));
    buttons->addStretch();
    row->addLayout(buttons);
}

void LogPinsView::makeShownPins() {
    auto* layout = new QVBoxLayout(pins_);
    layout->setContentsMargins(0, 0, 0, 0);
    hint_ = new QLabel("No extra pin is enabled. Choose Configure, Edit Configuration, Extra Pins.",
                       pins_);
    layout->addWidget(hint_);
    auto* grid = new QGridLayout;
    grid->setHorizontalSpacing(18);
    grid->setColumnStretch(3, 1);
    for (int row = 0; row < ExtraPinRows::rowCount; ++row)
        addRow(*grid, row);
    layout->addLayout(grid);
    layout->addStretch();
}

void LogPinsView::addRow(QGridLayout& grid, int row) {
    ExtraPinRows& pins = form_.extraPins;
    const auto addName = [&](forms::Label& name) {
        auto* label = binder_.make<QLabel>(name, pins_);
        label->setTextFormat(Qt::PlainText);
        label->setMaximumWidth(label->fontMetrics().averageCharWidth() * 40); // any name fits
        grid.addWidget(label, row, 0);
    };
    if (single()) {
        addName(pins.lblSetNow(row));
        auto* pair = new QWidget(pins_);
        auto* options = new QHBoxLayout(pair);
        options->setContentsMargins(0, 0, 0, 0);
        options->addWidget(binder_.make<QRadioButton>(pins.optSetHighNow(row), pair));
        options->addWidget(binder_.make<QRadioButton>(pins.optSetLowNow(row), pair));
        grid.addWidget(pair, row, 1);
    } else {
        addName(pins.lblPinName(row));
        grid.addWidget(binder_.make<QPushButton>(pins.cmdToggleHigh(row), pins_), row, 1);
        grid.addWidget(binder_.make<QPushButton>(pins.cmdToggleLow(row), pins_), row, 2);
    }
}

void LogPinsView::follow() {
    if (!frame(pinsTab).visible())
        return;
    if (hint_ == nullptr)
        makeShownPins();
    hint_->setVisible(!form_.extraPins.lblPinName(0).visible());
}

} // namespace bitlux::gui
