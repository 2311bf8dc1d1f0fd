#include "gui/sequence_view.h"

#include "gui/panel_widgets.h"
#include "panels/zt72518/sequence_layout.h"

#include <QGridLayout>
#include <QHBoxLayout>
#include <QScrollBar>
#include <QVBoxLayout>

namespace bitlux::gui {

SequenceView::SequenceView(zt72518::Sequencer& sequencer, Binder& binder, QWidget* parent)
    : QWidget(parent), sequencer_(sequencer), binder_(binder) {
    auto* layout = new QHBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(makeLists(), 1);
    layout->addWidget(makeTools());
}

QWidget* SequenceView::makeLists() {
    SequenceLists& lists = sequencer_.lists;
    auto* widget = new QWidget(this);
    auto* row = new QHBoxLayout(widget);
    row->setContentsMargins(0, 0, 0, 0);
    row->setSpacing(2);
    lists_ = {makeList(lists.List1, "Lines", widget),
              makeList(lists.List_Commands, "Commands", widget),
              makeList(lists.List_Value, "Values", widget),
              makeList(lists.answers(zt72518::HighByte), "High bytes", widget),
              makeList(lists.answers(zt72518::LowByte), "Low bytes", widget)};
    constexpr std::array<std::pair<int, int>, 5> shares{
        {{15, 0}, {22, 5}, {17, 2}, {20, 4}, {20, 4}}}; // characters at least, part of the rest
    for (std::size_t i = 0; i < lists_.size(); ++i) {
        LogView* list = lists_.at(i);
        const int width = list->fontMetrics().averageCharWidth() * shares.at(i).first;
        list->setMinimumWidth(width);
        if (shares.at(i).second == 0)
            list->setMaximumWidth(width);
        row->addWidget(list, shares.at(i).second);
    }
    lists_.front()->setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOff); // it goes with the others
    scrollTogether();
    return widget;
}

LogView* SequenceView::makeList(forms::ListBox& control, const QString& name, QWidget* parent) {
    auto* list = binder_.make<LogView>(control, parent);
    list->setAccessibleName(name);
    return list;
}

void SequenceView::scrollTogether() {
    for (LogView* list : lists_) {
        // One that shows a bar shortens its lines, and all have to stand side by side.
        list->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
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
    auto* widget = new QWidget(this);
    auto* column = new QVBoxLayout(widget);
    column->setContentsMargins(4, 0, 0, 0);
    for (QWidget* group :
         {makeRun(widget), makeLines(widget), makeValue(widget), makeConditions(widget)})
        column->addWidget(group);
    column->addStretch();
    return widget;
}

QLineEdit* SequenceView::makeNumber(forms::TextBox& control, const QString& name, QWidget* parent) {
    auto* edit = binder_.make<QLineEdit>(control, parent);
    edit->setAccessibleName(name);
    edit->setPlaceholderText(name);
    edit->setMinimumWidth(edit->fontMetrics().averageCharWidth() * 8);
    return edit;
}

QWidget* SequenceView::makeRun(QWidget* parent) {
    SequencePlayer& run = sequencer_.player;
    auto* box = new QGroupBox("Run", parent);
    auto* grid = new QGridLayout(box);
    grid->addWidget(PanelWidgets::button(binder_, run.Cm_Run_Seq, box), 0, 0, 1, 4);
    grid->addWidget(binder_.make<QCheckBox>(run.Ch_Loop, box), 1, 0, 1, 2);
    grid->addWidget(PanelWidgets::button(binder_, run.Cm_Stop_Loop, box), 1, 2, 1, 2);
    auto* form = &run.Ch_Loop.form();
    constexpr int startLabel = 5;
    for (const int i : {0, 1}) {
        auto& pick = form->control("Label_Liste(" + std::to_string(startLabel + i) + ")");
        auto* label = binder_.make<QLabel>(dynamic_cast<forms::Label&>(pick), box);
        label->setMargin(2);
        QSizePolicy policy = label->sizePolicy();
        policy.setRetainSizeWhenHidden(true);
        label->setSizePolicy(policy);
        grid->addWidget(label, 2, 2 * i);
        grid->addWidget(makeNumber(sequencer_.Val_loop(i), "line", box), 2, 2 * i + 1);
    }
    auto* trigger = binder_.make<QLabel>(sequencer_.watchdog.wd_aff(4), box);
    grid->addWidget(trigger, 3, 0, 1, 3);
    grid->addWidget(makeNumber(sequencer_.Val_loop(zt72518::Sequencer::TriggerLine), "line", box),
                    3, 3);
    return box;
}

QWidget* SequenceView::makeLines(QWidget* parent) {
    SequenceEditor& editor = sequencer_.editor;
    auto* box = new QGroupBox("Lines", parent);
    auto* grid = new QGridLayout(box);
    grid->addWidget(PanelWidgets::button(binder_, editor.Cm_Wait, box), 0, 0);
    grid->addWidget(makeNumber(editor.Text_Wait, "ms", box), 0, 1);
    grid->addWidget(PanelWidgets::button(binder_, editor.Cm_Remove_Line, box), 1, 0);
    grid->addWidget(PanelWidgets::button(binder_, editor.Cm_CLEAR_lists, box), 1, 1);
    grid->addWidget(PanelWidgets::button(binder_, sequencer_.files.Cm_LOAD_Seq, box), 2, 0);
    grid->addWidget(PanelWidgets::button(binder_, sequencer_.files.Cm_SAVE_Seq, box), 2, 1);
    return box;
}

QWidget* SequenceView::makeValue(QWidget* parent) {
    zt72518::Watchdog& watchdog = sequencer_.watchdog;
    constexpr int timeOfLine = 3;
    constexpr int changeValue = 15;
    auto* box = new QGroupBox("Value of the selected line", parent);
    auto* row = new QHBoxLayout(box);
    row->addWidget(makeNumber(sequencer_.Val_loop(zt72518::Sequencer::EditedValue), "value", box));
    auto* time = binder_.make<QComboBox>(watchdog.wd_config(timeOfLine), box);
    time->setAccessibleName("time");
    row->addWidget(time);
    row->addWidget(PanelWidgets::button(binder_, watchdog.watchdog(changeValue), box));
    return box;
}

QWidget* SequenceView::makeConditions(QWidget* parent) {
    zt72518::SequenceStops& stops = sequencer_.stops;
    struct Condition {
        forms::CheckBox& box;
        forms::TextBox& line;
        const forms::ControlArray<forms::OptionButton>& lines;
        forms::Button& pass;
    };
    const std::array<Condition, 2> conditions{
        {{stops.Ch_FirstCondition, stops.Text_FirstCondition, stops.R_Condition1,
          stops.Cm_PassCondition1},
         {stops.Ch_SecondCondition, stops.Text_SecondCondition, stops.R_Condition2,
          stops.Cm_PassCondition2}}};
    auto* box = new QGroupBox("Stop behind a line and wait for the chip", parent);
    auto* column = new QVBoxLayout(box);
    for (int frame = 0; const Condition& condition : conditions) {
        auto* part = new QWidget(box);
        binder_.bind(stops.frame_Condition(frame++), *part);
        auto* grid = new QGridLayout(part);
        grid->setContentsMargins(0, 0, 0, 0);
        grid->addWidget(binder_.make<QCheckBox>(condition.box, part), 0, 0, 1, 2);
        grid->addWidget(makeNumber(condition.line, "line", part), 0, 2);
        for (const int line : {0, 1})
            grid->addWidget(binder_.make<QRadioButton>(condition.lines(line), part), 1, line);
        grid->addWidget(PanelWidgets::button(binder_, condition.pass, part), 1, 2);
        column->addWidget(part);
    }
    return box;
}

} // namespace bitlux::gui
