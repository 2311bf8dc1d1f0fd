#include "gui/sequence_view.h"

#include "gui/panel_widgets.h"
#include "gui/run_progress_view.h"
#include "gui/sheet.h"
#include "gui/theme.h"
#include "panels/zt72518/sequence_layout.h"

#include <algorithm>

#include <QApplication>
#include <QGridLayout>
#include <QHBoxLayout>
#include <QScrollBar>
#include <QVBoxLayout>

#include <fmt/format.h>

namespace bitlux::gui {

namespace {

/// A widget that is hidden keeps its room.
void keepRoom(QWidget& widget) {
    QSizePolicy policy = widget.sizePolicy();
    policy.setRetainSizeWhenHidden(true);
    widget.setSizePolicy(policy);
}

} // namespace

/// A point at which a run stops.
struct SequenceView::Condition {
    forms::Frame& frame;
    forms::CheckBox& box;
    forms::TextBox& line;
    const forms::ControlArray<forms::OptionButton>& events;
    forms::Button& pass;
};

SequenceView::SequenceView(zt72518::Sequencer& sequencer, Binder& binder, QWidget* parent)
    : QWidget(parent), sequencer_(sequencer), binder_(binder) {
    auto* layout = new QHBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(makeLists(), 1);
    layout->addWidget(makeTools());
    flushed_ = binder_.flushed.follow([this] { follow(); });
    progressed_ = sequencer_.player.progressChanged.follow([this] { binder_.flushSoon(); });
    forms::Form& form = sequencer_.player.Cm_Run_Seq.form();
    formGoing_ = form.set().formGoing.follow([this, &form](forms::Form& going) {
        if (&going != &form)
            return;
        flushed_.reset();
        progressed_.reset();
        progress_->leave();
    });
    follow();
}

QWidget* SequenceView::makeLists() {
    SequenceLists& lists = sequencer_.lists;
    auto* widget = new QWidget(this);
    auto* row = new QHBoxLayout(widget);
    row->setContentsMargins(0, 0, 0, 0);
    row->setSpacing(0);
    lists_ = {makeList(lists.List1, "Lines", widget),
              makeList(lists.List_Commands, "Commands", widget),
              makeList(lists.List_Value, "Values", widget),
              makeList(lists.answers(zt72518::HighByte), "High bytes", widget),
              makeList(lists.answers(zt72518::LowByte), "Low bytes", widget)};
    constexpr std::array<std::pair<int, int>, 5> shares{
        {{13, 0}, {16, 6}, {11, 3}, {19, 4}, {21, 5}}}; // characters at least, part of the rest
    for (std::size_t i = 0; i < lists_.size(); ++i) {
        LogView* list = lists_.at(i);
        const int width = list->fontMetrics().averageCharWidth() * shares.at(i).first;
        list->setMinimumWidth(width);
        if (shares.at(i).second == 0)
            list->setMaximumWidth(width);
        row->addWidget(list, shares.at(i).second);
    }
    scrollTogether();
    return widget;
}

LogView* SequenceView::makeList(forms::ListBox& control, const QString& name, QWidget* parent) {
    auto* list = binder_.make<LogView>(control, parent);
    list->setAccessibleName(name);
    list->setHeader();
    return list;
}

void SequenceView::scrollTogether() {
    for (LogView* list : lists_) {
        // One that shows a bar shortens its lines, and all have to stand side by side.
        list->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
        if (list != lists_.back())
            list->setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
        connect(list->verticalScrollBar(), &QScrollBar::valueChanged, this, [this](int value) {
            if (scrolling_)
                return;
            scrolling_ = true;
            for (LogView* other : lists_)
                other->verticalScrollBar()->setValue(value);
            scrolling_ = false;
        });
    }
}

QWidget* SequenceView::makeTools() {
    auto* sheet = new Sheet(this);
    sheet->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    auto* column = new QVBoxLayout(sheet->widget());
    column->setContentsMargins(4, 0, 0, 0);
    for (QWidget* group : {makeRun(sheet->widget()), makeLines(sheet->widget()),
                           makeValue(sheet->widget()), makeConditions(sheet->widget())})
        column->addWidget(group);
    column->addStretch();
    sheet->setFixedWidth(sheet->widget()->sizeHint().width() +
                         sheet->verticalScrollBar()->sizeHint().width());
    return sheet;
}

QLineEdit* SequenceView::makeNumber(forms::TextBox& control, const QString& prompt,
                                    const QString& name, QWidget* parent) {
    auto* edit = binder_.make<QLineEdit>(control, parent);
    edit->setAccessibleName(name);
    edit->setPlaceholderText(prompt);
    edit->setMinimumWidth(edit->fontMetrics().averageCharWidth() * 8);
    return edit;
}

QWidget* SequenceView::makeRun(QWidget* parent) {
    SequencePlayer& run = sequencer_.player;
    auto* box = new QGroupBox("Run", parent);
    auto* grid = new QGridLayout(box);
    runButton_ = PanelWidgets::button(binder_, run.Cm_Run_Seq, box);
    grid->addWidget(runButton_, 0, 0, 1, 4);
    progress_ = new RunProgressView([&run] { return shownRun(run); }, binder_, box);
    progress_->setObjectName("sequenceProgress");
    keepRoom(*progress_);
    grid->addWidget(progress_, 1, 0, 1, 4);
    addLoop(*grid, box);
    auto* trigger = binder_.make<QLabel>(sequencer_.watchdog.wd_aff(4), box);
    grid->addWidget(trigger, 4, 0, 1, 3);
    grid->addWidget(makeNumber(sequencer_.Val_loop(zt72518::Sequencer::TriggerLine), "line",
                               "Trigger line", box),
                    4, 3);
    return box;
}

void SequenceView::addLoop(QGridLayout& grid, QWidget* parent) {
    SequencePlayer& run = sequencer_.player;
    grid.addWidget(binder_.make<QCheckBox>(run.Ch_Loop, parent), 2, 0, 1, 2);
    grid.addWidget(PanelWidgets::button(binder_, run.Cm_Stop_Loop, parent), 2, 2, 1, 2);
    forms::Form& form = run.Ch_Loop.form();
    constexpr int startLabel = 5;
    const std::array<const char*, 2> names{"First line of the loop", "Last line of the loop"};
    for (const int i : {0, 1}) {
        auto& pick = form.control(fmt::format("Label_Liste({})", startLabel + i));
        auto* label = binder_.make<QLabel>(dynamic_cast<forms::Label&>(pick), parent);
        label->setMargin(2);
        keepRoom(*label);
        grid.addWidget(label, 3, 2 * i);
        grid.addWidget(makeNumber(sequencer_.Val_loop(i), "line",
                                  names.at(static_cast<std::size_t>(i)), parent),
                       3, 2 * i + 1);
    }
}

QWidget* SequenceView::makeLines(QWidget* parent) {
    SequenceEditor& editor = sequencer_.editor;
    auto* box = new QGroupBox("Lines", parent);
    auto* grid = new QGridLayout(box);
    grid->addWidget(PanelWidgets::button(binder_, editor.Cm_Wait, box), 0, 0);
    grid->addWidget(makeNumber(editor.Text_Wait, "ms", "Wait in ms", box), 0, 1);
    grid->addWidget(PanelWidgets::button(binder_, editor.Cm_Remove_Line, box), 1, 0);
    grid->addWidget(PanelWidgets::button(binder_, editor.Cm_CLEAR_lists, box), 1, 1);
    grid->addWidget(PanelWidgets::button(binder_, sequencer_.files.Cm_LOAD_Seq, box), 2, 0);
    grid->addWidget(PanelWidgets::button(binder_, sequencer_.files.Cm_SAVE_Seq, box), 2, 1);
    grid->setColumnStretch(1, 1);
    return box;
}

QWidget* SequenceView::makeValue(QWidget* parent) {
    zt72518::Watchdog& watchdog = sequencer_.watchdog;
    constexpr int timeOfLine = 3;
    constexpr int changeValue = 15;
    auto* box = new QGroupBox("Value of the selected line", parent);
    auto* row = new QHBoxLayout(box);
    row->addWidget(
        makeNumber(sequencer_.Val_loop(zt72518::Sequencer::EditedValue), "value", "Value", box));
    auto* time = binder_.make<QComboBox>(watchdog.wd_config(timeOfLine), box);
    time->setAccessibleName("Time");
    row->addWidget(time);
    row->addWidget(PanelWidgets::button(binder_, watchdog.watchdog(changeValue), box));
    return box;
}

QWidget* SequenceView::makeConditions(QWidget* parent) {
    zt72518::SequenceStops& stops = sequencer_.stops;
    auto* box = new QGroupBox("Stop behind a line and wait for the chip", parent);
    auto* column = new QVBoxLayout(box);
    column->addWidget(
        makeCondition({stops.frame_Condition(0), stops.Ch_FirstCondition, stops.Text_FirstCondition,
                       stops.R_Condition1, stops.Cm_PassCondition1},
                      box));
    column->addWidget(
        makeCondition({stops.frame_Condition(1), stops.Ch_SecondCondition,
                       stops.Text_SecondCondition, stops.R_Condition2, stops.Cm_PassCondition2},
                      box));
    return box;
}

QWidget* SequenceView::makeCondition(const Condition& condition, QWidget* parent) {
    auto* part = new QWidget(parent);
    binder_.bind(condition.frame, *part);
    auto* grid = new QGridLayout(part);
    grid->setContentsMargins(0, 0, 0, 0);
    auto* box = binder_.make<QCheckBox>(condition.box, part);
    grid->addWidget(box, 0, 0, 1, 2);
    auto* line = makeNumber(condition.line, "line", box->text() + ", line", part);
    keepRoom(*line);
    grid->addWidget(line, 0, 2);
    for (const int event : {0, 1}) {
        auto* option = binder_.make<QRadioButton>(condition.events(event), part);
        keepRoom(*option);
        grid->addWidget(option, 1, event);
    }
    grid->addWidget(PanelWidgets::button(binder_, condition.pass, part), 1, 2);
    // The same columns in both parts.
    for (const int column : {0, 1})
        grid->setColumnMinimumWidth(column, part->fontMetrics().averageCharWidth() * 13);
    grid->setColumnStretch(2, 1);
    return part;
}

void SequenceView::follow() {
    const SequenceLists& lists = sequencer_.lists;
    const std::optional<SequenceProgress>& progress = sequencer_.player.progress();
    // The arrow may stand behind the last line.
    const auto rows =
        std::max(lists.List_Commands.count() + 1, lists.answers(zt72518::HighByte).count());
    for (LogView* list : lists_)
        list->scrollAsIf(static_cast<int>(rows));
    for (LogView* list : lists_)
        list->mark(progress ? progress->line : -1);
    showRun(progress.has_value());
}

void SequenceView::showRun(bool runs) {
    const qint64 theme = runs ? QApplication::palette().cacheKey() : 0;
    if (theme == runTheme_)
        return;
    runTheme_ = theme;
    QPalette palette; // the theme's
    if (runs) {
        palette.setColor(QPalette::Button, changedColor());
        palette.setColor(QPalette::Disabled, QPalette::ButtonText,
                         QApplication::palette().color(QPalette::ButtonText));
    }
    runButton_->setPalette(palette);
}

} // namespace bitlux::gui
