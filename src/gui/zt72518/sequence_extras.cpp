#include "gui/zt72518/extras.h"
#include "panels/zt72518/value_editor.h"
#include "panels/zt72518/watchdog.h"

#include <QGridLayout>

namespace bitlux::gui {

namespace {

constexpr int editedValue = 2; ///< elements of Val_loop
constexpr int triggerLine = 3;

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
    extras.sequence.run.push_back([widgets, &form, watchdog](QWidget* parent) {
        return makeTrigger(widgets, form, *watchdog, parent);
    });
    if (form.findPart<zt72518::ValueEditor>() != nullptr)
        extras.sequence.groups.push_back([widgets, &form, watchdog](QWidget* parent) {
            return makeValue(widgets, form, *watchdog, parent);
        });
}

} // namespace bitlux::gui
