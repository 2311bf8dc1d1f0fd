#include "gui/zt72518/extras.h"
#include "gui/zt72518/watchdog_view.h"
#include "panels/zt72518/auto_reads.h"
#include "panels/zt72518/sequence_stops.h"
#include "panels/zt72518/value_editor.h"
#include "panels/zt72518/watchdog.h"

#include <QGridLayout>

namespace bitlux::gui {

namespace {

constexpr int editedValue = 2; ///< elements of Val_loop
constexpr int triggerLine = 3;

/// A point at which a run stops.
struct Condition {
    forms::Frame& frame;
    forms::CheckBox& box;
    forms::TextBox& line;
    const forms::ControlArray<forms::OptionButton>& events;
    forms::Button& pass;
};

QWidget* makeCondition(const PanelWidgets& widgets, const Condition& condition, QWidget* parent) {
    Binder& binder = widgets.binder;
    auto* part = new QWidget(parent);
    binder.bind(condition.frame, *part);
    auto* grid = new QGridLayout(part);
    grid->setContentsMargins(0, 0, 0, 0);
    auto* box = binder.make<QCheckBox>(condition.box, part);
    grid->addWidget(box, 0, 0, 1, 2);
    auto* line = widgets.entry(condition.line, "line", box->text() + ", line", part);
    PanelWidgets::keepRoom(*line);
    grid->addWidget(line, 0, 2);
    for (const int event : {0, 1}) {
        auto* option = binder.make<QRadioButton>(condition.events(event), part);
        PanelWidgets::keepRoom(*option);
        grid->addWidget(option, 1, event);
    }
    grid->addWidget(PanelWidgets::button(binder, condition.pass, part), 1, 2);
    // The same columns in both parts.
    for (const int column : {0, 1})
        grid->setColumnMinimumWidth(column, part->fontMetrics().averageCharWidth() * 13);
    grid->setColumnStretch(2, 1);
    return part;
}

QWidget* makeConditions(const PanelWidgets& widgets, zt72518::SequenceStops& stops,
                        QWidget* parent) {
    auto* box = new QGroupBox("Stop behind a line and wait for the chip", parent);
    auto* column = new QVBoxLayout(box);
    column->addWidget(
        makeCondition(widgets,
                      {stops.frame_Condition(0), stops.Ch_FirstCondition, stops.Text_FirstCondition,
                       stops.R_Condition1, stops.Cm_PassCondition1},
                      box));
    column->addWidget(
        makeCondition(widgets,
                      {stops.frame_Condition(1), stops.Ch_SecondCondition,
                       stops.Text_SecondCondition, stops.R_Condition2, stops.Cm_PassCondition2},
                      box));
    return box;
}

QWidget* makeTrigger(const PanelWidgets& widgets, PanelForm& form, zt72518::Watchdog& watchdog,
                     QWidget* parent) {
    auto* line = new QWidget(parent);
    auto* row = new QHBoxLayout(line);
    row->setContentsMargins(0, 0, 0, 0);
    row->addWidget(widgets.binder.make<QLabel>(watchdog.wd_aff(4), line), 1);
    row->addWidget(
        widgets.entry(form.sequence.Val_loop(triggerLine), "line", "Trigger line", line));
    return line;
}

QWidget* makeValue(const PanelWidgets& widgets, PanelForm& form, zt72518::Watchdog& watchdog,
                   QWidget* parent) {
    constexpr int timeOfLine = 3;
    constexpr int changeValue = 15;
    auto* box = new QGroupBox("Value of the selected line", parent);
    auto* row = new QHBoxLayout(box);
    row->addWidget(widgets.entry(form.sequence.Val_loop(editedValue), "value", "Value", box));
    auto* time = widgets.binder.make<QComboBox>(watchdog.wd_config(timeOfLine), box);
    time->setAccessibleName("Time");
    row->addWidget(time);
    row->addWidget(PanelWidgets::button(widgets.binder, watchdog.watchdog(changeValue), box));
    return box;
}

} // namespace

void addWatchdogExtras(PanelForm& form, const PanelWidgets& widgets, PanelExtras& extras) {
    auto* watchdog = form.findPart<zt72518::Watchdog>();
    if (watchdog == nullptr)
        return;
    extras.pages["watchdog"] = [widgets, watchdog,
                                reads = form.findPart<zt72518::AutoReads>()](QWidget* parent) {
        return new WatchdogView(*watchdog, reads, widgets.binder, parent);
    };
    for (const int button : {8, 9, 10, 11, 14})
        extras.copies.push_back(&watchdog->watchdog(button));
    extras.sequence.run.push_back([widgets, &form, watchdog](QWidget* parent) {
        return makeTrigger(widgets, form, *watchdog, parent);
    });
    if (form.findPart<zt72518::ValueEditor>() != nullptr)
        extras.sequence.groups.push_back([widgets, &form, watchdog](QWidget* parent) {
            return makeValue(widgets, form, *watchdog, parent);
        });
}

void addStopExtras(PanelForm& form, const PanelWidgets& widgets, PanelExtras& extras) {
    if (auto* stops = form.findPart<zt72518::SequenceStops>())
        extras.sequence.groups.push_back(
            [widgets, stops](QWidget* parent) { return makeConditions(widgets, *stops, parent); });
}

} // namespace bitlux::gui
