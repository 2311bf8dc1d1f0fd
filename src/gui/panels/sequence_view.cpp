#include "gui/panels/sequence_view.h"

#include "gui/desktop/theme.h"
#include "gui/panels/sheet.h"
#include "gui/window/run_progress_view.h"
#include "platform/forms/form_set.h"

#include <algorithm>

#include <QApplication>
#include <QGridLayout>
#include <QHBoxLayout>
#include <QScrollBar>
#include <QVBoxLayout>

namespace bitlux::gui {

namespace {

/// Widths of a list, in characters: the minimum, and the preferred one.
struct Share {
    int least;
    int wanted; ///< 0 for the minimum
};

int wantedFor(std::size_t text) {
    constexpr int most = 30;
    constexpr int beside = 2;
    return std::min(static_cast<int>(text) + beside, most);
}

/// A column of answers, of which there may be several.
Share answerShare(std::size_t columns, const std::string& title) {
    constexpr int allCharacters = 40;
    return {std::clamp(allCharacters / static_cast<int>(columns), 10, 20), wantedFor(title.size())};
}

/// A box that does not widen its column.
void takeWhatIsLeft(QLineEdit& entry) {
    entry.setSizePolicy(QSizePolicy::Ignored, entry.sizePolicy().verticalPolicy());
}

std::size_t longestLine(const chips::Chip& chip) {
    std::size_t longest = 0;
    for (const chips::Command& any : chip.commands)
        longest = std::max(longest, any.line.name.size());
    for (const chips::Register& any : chip.registers) {
        longest = std::max(longest, any.writeLine.name.size());
        for (const chips::View& view : any.views)
            longest = std::max(longest, view.line.name.size());
    }
    return longest;
}

} // namespace

SequenceView::SequenceView(PanelForm& form, const SequenceExtras& extras,
                           const PanelWidgets& widgets, QWidget* parent)
    : QWidget(parent),
      form_(form),
      style_(form.chip().sequence),
      sequence_(form.sequence),
      widgets_(widgets) {
    auto* layout = new QHBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(makeLists(form.chip()), 1);
    layout->addWidget(makeTools(extras));
    for (const auto& number : sequence_.Val_loop)
        if (!widgets_.binder.isBound(*number)) // no part uses it
            widgets_.binder.leaveOut(*number);
    followForm();
    follow();
}

void SequenceView::followForm() {
    Binder& binder = widgets_.binder;
    flushed_ = binder.flushed.follow([this] { follow(); });
    progressed_ = sequence_.player.progressChanged.follow([&binder] { binder.flushSoon(); });
    forms::Form& form = sequence_.player.Cm_Run_Seq.form();
    formGoing_ = form.set().formGoing.follow([this, &form](forms::Form& going) {
        if (&going != &form)
            return;
        flushed_.reset();
        progressed_.reset();
        progress_->leave();
    });
}

QWidget* SequenceView::makeLists(const chips::Chip& chip) {
    SequenceLists& lists = sequence_.lists;
    auto* widget = new QWidget(this);
    auto* row = new QHBoxLayout(widget);
    row->setContentsMargins(0, 0, 0, 0);
    row->setSpacing(0);
    lists_ = {makeList(lists.List1, "Lines", widget),
              makeList(lists.List_Commands, "Commands", widget),
              makeList(lists.List_Value, "Values", widget)};
    std::vector<Share> shares{{13, 0},
                              {16, wantedFor(longestLine(chip))},
                              {11, wantedFor(chip.sequence.valueTitle.size())}};
    for (std::size_t i = 0; i < lists.columns(); ++i) {
        forms::ListBox& answers = lists.answers(i);
        lists_.push_back(makeList(answers, textOf(answers.line(0)), widget));
        shares.push_back(answerShare(lists.columns(), answers.line(0)));
    }
    for (std::size_t i = 0; i < lists_.size(); ++i) {
        LogView* list = lists_[i];
        const int width = list->fontMetrics().averageCharWidth() * shares[i].least;
        list->setMinimumWidth(width);
        if (shares[i].wanted == 0)
            list->setMaximumWidth(width);
        row->addWidget(list, shares[i].wanted);
    }
    scrollTogether();
    return widget;
}

LogView* SequenceView::makeList(forms::ListBox& control, const QString& name, QWidget* parent) {
    auto* list = widgets_.binder.make<LogView>(control, parent);
    list->setAccessibleName(name);
    list->setHeader();
    return list;
}

void SequenceView::scrollTogether() {
    for (LogView* list : lists_) {
        // A horizontal scroll bar in one list reduces its height, and the lines of all lists must
        // be aligned.
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

QWidget* SequenceView::makeTools(const SequenceExtras& extras) {
    auto* sheet = new Sheet(this);
    sheet->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    QWidget* tools = sheet->widget();
    auto* column = new QVBoxLayout(tools);
    column->setContentsMargins(4, 0, 0, 0);
    column->addWidget(makeRun(tools));
    column->addWidget(makeLines(tools));
    if (style_.editor.exists())
        column->addWidget(makeEditor(tools));
    for (const MakeWidget& make : extras.groups)
        column->addWidget(make(tools));
    column->addStretch();
    sheet->setFixedWidth(tools->sizeHint().width() +
                         sheet->verticalScrollBar()->sizeHint().width());
    return sheet;
}

QWidget* SequenceView::makeRun(QWidget* parent) {
    SequencePlayer& run = sequence_.player;
    auto* box = new QGroupBox("Run", parent);
    auto* grid = new QGridLayout(box);
    runButton_ = PanelWidgets::button(widgets_.binder, run.Cm_Run_Seq, box);
    grid->addWidget(runButton_, 0, 0, 1, 4);
    progress_ = new RunProgressView([&run] { return shownRun(run); }, widgets_.binder, box);
    progress_->setObjectName("sequenceProgress");
    PanelWidgets::keepRoom(*progress_);
    grid->addWidget(progress_, 1, 0, 1, 4);
    addLoop(*grid, box);
    if (style_.trigger.exists())
        addTrigger(*grid, box);
    return box;
}

void SequenceView::addLoop(QGridLayout& grid, QWidget* parent) {
    SequencePlayer& run = sequence_.player;
    grid.addWidget(widgets_.binder.make<QCheckBox>(run.Ch_Loop, parent), 2, 0, 1, 2);
    grid.addWidget(PanelWidgets::button(widgets_.binder, run.Cm_Stop_Loop, parent), 2, 2, 1, 2);
    constexpr std::array captions{"Start", "Stop"};
    constexpr std::array names{"First line of the loop", "Last line of the loop"};
    for (std::size_t i = 0; i < captions.size(); ++i) {
        const int column = 2 * static_cast<int>(i);
        grid.setColumnStretch(column + 1, 1);
        std::optional<forms::Label>& given = i == 0 ? run.loopStartCaption : run.loopStopCaption;
        auto* caption = new QLabel(captions.at(i), parent);
        if (given)
            widgets_.binder.bind(*given, *caption);
        caption->setMargin(2);
        PanelWidgets::keepRoom(*caption);
        grid.addWidget(caption, 3, column);
        QLineEdit* line =
            widgets_.entry(sequence_.Val_loop(static_cast<int>(i)), "line", names.at(i), parent);
        PanelWidgets::keepRoom(*line);
        takeWhatIsLeft(*line);
        grid.addWidget(line, 3, column + 1);
    }
}

QWidget* SequenceView::makeLines(QWidget* parent) {
    SequenceEditor& editor = sequence_.editor;
    const auto button = [this](forms::Button& control, QWidget* box) {
        return PanelWidgets::button(widgets_.binder, control, box);
    };
    auto* box = new QGroupBox("Lines", parent);
    auto* grid = new QGridLayout(box);
    grid->addWidget(button(editor.Cm_Wait, box), 0, 0);
    QLineEdit* wait = widgets_.entry(editor.Text_Wait, "ms", "Wait in ms", box);
    takeWhatIsLeft(*wait);
    grid->addWidget(wait, 0, 1);
    grid->addWidget(button(editor.Cm_Remove_Line, box), 1, 0);
    grid->addWidget(button(editor.Cm_CLEAR_lists, box), 1, 1);
    if (editor.cm_MoveUp)
        grid->addWidget(button(*editor.cm_MoveUp, box), 2, 0);
    if (editor.cm_MoveDown)
        grid->addWidget(button(*editor.cm_MoveDown, box), 2, 1);
    grid->addWidget(button(sequence_.files.Cm_LOAD_Seq, box), 3, 0);
    grid->addWidget(button(sequence_.files.Cm_SAVE_Seq, box), 3, 1);
    grid->setColumnStretch(1, 1);
    return box;
}

void SequenceView::addTrigger(QGridLayout& grid, QWidget* parent) {
    auto* caption = new QLabel("Trigger line", parent);
    if (style_.trigger.label.exists())
        widgets_.binder.bind(named<forms::Label>(style_.trigger.label), *caption);
    const int row = grid.rowCount();
    grid.addWidget(caption, row, 0, 1, 3);
    grid.addWidget(
        widgets_.entry(sequence_.Val_loop(style_.trigger.box), "line", "Trigger line", parent), row,
        3);
}

QWidget* SequenceView::makeEditor(QWidget* parent) {
    const chips::SequenceStyle::Editor& editor = style_.editor;
    auto* box = new QGroupBox("Value of the selected line", parent);
    auto* row = new QHBoxLayout(box);
    row->addWidget(widgets_.entry(sequence_.Val_loop(editor.box), "value", "Value", box));
    if (editor.list.exists()) {
        auto* list = widgets_.binder.make<QComboBox>(named<forms::ComboBox>(editor.list), box);
        list->setAccessibleName("Value to choose");
        row->addWidget(list);
    }
    const chips::ControlName own{.name = std::string(chips::changeButton)};
    auto& button = named<forms::Button>(editor.button.exists() ? editor.button : own);
    row->addWidget(PanelWidgets::button(widgets_.binder, button, box));
    return box;
}

void SequenceView::follow() {
    const SequenceLists& lists = sequence_.lists;
    const std::optional<SequenceProgress>& progress = sequence_.player.progress();
    std::size_t rows = lists.List_Commands.count() + 1; // the arrow may be after the last line
    for (std::size_t i = 0; i < lists.columns(); ++i)
        rows = std::max(rows, lists.answers(i).count());
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
