#include "gui/window/log_pins_view.h"

#include "gui/window/copy_menu.h"
#include "gui/window/decoded_view.h"

#include <QGridLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <QVBoxLayout>

namespace bitlux::gui {

namespace {

constexpr int logTab = 1;
constexpr int pinsTab = 2;

} // namespace

LogPinsView::LogPinsView(Program& program, Binder& binder, Page page, QWidget* parent)
    : QWidget(parent), program_(program), form_(program.mainForm()), binder_(binder), page_(page) {
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
    auto* list = new QWidget(&page); // is hidden for the list, whose own state the form has
    auto* around = new QVBoxLayout(list);
    around->setContentsMargins(0, 0, 0, 0);
    auto* lines =
        binder_.make<LogView>(single() ? log.lstSessionLogSingle : log.lstSessionLogMult, list);
    lines->setAccessibleName("Session Log");
    addCopyMenu(*lines, program_.copies(), [this](int line) {
        return program_.copies().ofLogLine(static_cast<std::size_t>(line));
    });
    around->addWidget(lines);
    row->addWidget(list, 1);
    auto* buttons = new QVBoxLayout;
    buttons->addWidget(
        binder_.make<QPushButton>(single() ? log.cmdSaveLogSingle : log.cmdSaveLogMult, &page));
    buttons->addWidget(
        binder_.make<QPushButton>(single() ? log.cmdClearLogSingle : log.cmdClearLogMult, &page));
    addDecoded(*row, *buttons, *lines);
    buttons->addStretch();
    row->addLayout(buttons);
}

void LogPinsView::addDecoded(QBoxLayout& row, QBoxLayout& buttons, QWidget& lines) {
    QWidget& list = *lines.parentWidget();
    buttons.addSpacing(8);
    auto* button = new QPushButton("De&coded", list.parentWidget());
    button->setObjectName(single() ? "decodedSingle" : "decodedMult");
    button->setToolTip("Shows each word that was sent with its time and what it means to a chip");
    button->setCheckable(true);
    buttons.addWidget(button);
    connect(
        button, &QPushButton::toggled, this,
        [this, &row, &lines, &list, view = static_cast<DecodedView*>(nullptr)](bool on) mutable {
            if (view == nullptr) {
                view = makeDecoded(*list.parentWidget(), lines);
                row.insertWidget(row.indexOf(&list) + 1, view->parentWidget(), 1);
            }
            list.setVisible(!on);
            view->parentWidget()->setVisible(on);
            view->setFollowing(on);
        });
}

DecodedView* LogPinsView::makeDecoded(QWidget& page, QWidget& lines) {
    auto* made = new QWidget(&page);
    auto* column = new QVBoxLayout(made);
    column->setContentsMargins(0, 0, 0, 0);
    auto* view = new DecodedView(program_, binder_, made);
    auto* tools = new QHBoxLayout;
    view->addTools(*tools);
    column->addLayout(tools);
    column->addWidget(view, 1);
    setTabOrder(&lines, &view->names());
    setTabOrder(&view->names(), &view->exportButton());
    setTabOrder(&view->exportButton(), view);
    return view;
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
