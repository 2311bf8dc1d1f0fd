#include "gui/theme.h"
#include "gui/zt72516/extras.h"
#include "panels/zt72516/line_commands.h"
#include "panels/zt72516/watchdog.h"
#include "panels/zt72516/word_builder.h"

#include <QGridLayout>

namespace bitlux::gui {

namespace {

QWidget* makeWord(const char* line, forms::Label& word, const PanelWidgets& widgets,
                  QWidget* parent) {
    auto* pair = new QWidget(parent);
    auto* row = new QHBoxLayout(pair);
    row->setContentsMargins(0, 0, 0, 0);
    row->addWidget(new QLabel(line, pair));
    auto* text = widgets.binder.make<QLabel>(word, pair);
    text->setFont(fixedFont());
    text->setMinimumWidth(text->fontMetrics().averageCharWidth() * 24);
    text->setTextInteractionFlags(Qt::TextSelectableByMouse);
    row->addWidget(text);
    return pair;
}

QComboBox* makeChoice(forms::ComboBox& control, const char* name, const PanelWidgets& widgets,
                      QWidget* parent) {
    auto* list = widgets.binder.make<QComboBox>(control, parent);
    list->setPlaceholderText(name);
    list->setAccessibleName(name);
    return list;
}

QWidget* makeDongleWatchdog(zt72516::Watchdog& watchdog, const PanelWidgets& widgets,
                            QWidget* parent) {
    auto* box = new QGroupBox("Watchdog Settings", parent);
    auto* grid = new QGridLayout(box);
    grid->addWidget(widgets.binder.make<QCheckBox>(watchdog.Check_UseSpiDongleForWD, box), 0, 0, 1,
                    2);
    grid->addWidget(makeChoice(watchdog.Watchdog_Mode, "Watchdog Mode", widgets, box), 1, 0);
    grid->addWidget(makeChoice(watchdog.Watchdog_Timing, "Watchdog Timing", widgets, box), 1, 1);
    grid->addWidget(PanelWidgets::button(widgets.binder, watchdog.Btn_Start_Watchdog, box), 2, 0);
    grid->addWidget(PanelWidgets::button(widgets.binder, watchdog.Btn_Stop_Watchdog, box), 2, 1);
    auto* state = widgets.binder.make<QLabel>(watchdog.Watchdog_Status, box);
    state->setAlignment(Qt::AlignCenter);
    state->setMargin(4);
    grid->addWidget(state, 3, 0, 1, 2);
    return box;
}

/// Names of the controls of a point at which a run would stop.
struct Condition {
    const char* title;
    const char* box;
    const char* events;
    const char* pass;
};

QWidget* makeCondition(const Condition& condition, forms::TextBox& line,
                       const PanelWidgets& widgets, QWidget* parent) {
    auto* group = new QGroupBox(condition.title, parent);
    auto* grid = new QGridLayout(group);
    auto* box = widgets.make<QCheckBox, forms::CheckBox>(condition.box, group);
    grid->addWidget(box, 0, 0, 1, 4);
    for (const int event : {0, 1})
        grid->addWidget(
            widgets.make<QRadioButton, forms::OptionButton>({condition.events, event}, group), 1,
            event);
    auto* entry = widgets.entry(line, "line", QString(condition.title) + ", line", group);
    entry->setMaximumWidth(entry->minimumWidth());
    grid->addWidget(entry, 1, 2);
    grid->addWidget(widgets.rowButton(condition.pass, group, condition.title), 1, 3);
    return group;
}

} // namespace

void addWordDisplayExtras(PanelForm& form, const PanelWidgets& widgets, PanelExtras& extras) {
    auto* part = form.findPart<zt72516::WordBuilder>();
    if (part == nullptr)
        return;
    extras.lastWord.emplace_back([widgets, part](QWidget* parent) {
        return makeWord("MOSI", part->SPIWordSent, widgets, parent);
    });
    extras.lastWord.emplace_back([widgets, part](QWidget* parent) {
        return makeWord("MISO", part->SPIWordRcvd, widgets, parent);
    });
}

void addDongleWatchdogExtras(PanelForm& form, const PanelWidgets& widgets, PanelExtras& extras) {
    if (auto* part = form.findPart<zt72516::Watchdog>())
        extras.registerPages["W/D Refresh"].groups.emplace_back([widgets, part](QWidget* parent) {
            return makeDongleWatchdog(*part, widgets, parent);
        });
}

void addConditionExtras(PanelForm& form, const PanelWidgets& widgets, PanelExtras& extras) {
    auto* part = form.findPart<zt72516::LineCommands>();
    if (part == nullptr)
        return;
    extras.sequence.groups.emplace_back([widgets, part](QWidget* parent) {
        return makeCondition(
            {"First Condition", "Ch_FirstCondition", "R_Condition1", "Cm_PassCondition1"},
            part->Text_FirstCondition, widgets, parent);
    });
    extras.sequence.groups.emplace_back([widgets, part](QWidget* parent) {
        return makeCondition(
            {"Second Condition", "Ch_SecondCondition", "R_Condition2", "Cm_PassCondition2"},
            part->Text_SecondCondition, widgets, parent);
    });
    extras.sequence.groups.emplace_back([](QWidget* parent) {
        return PanelWidgets::note("A run does not stop at these conditions.", parent);
    });
}

} // namespace bitlux::gui
