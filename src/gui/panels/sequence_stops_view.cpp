#include "gui/panels/sequence_stops_view.h"

#include "panels/common/sequence_stops.h"

#include <QGridLayout>
#include <QGroupBox>

namespace bitlux::gui {

namespace {

/// A point at which a run stops.
struct Stop {
    forms::Frame& frame;
    forms::CheckBox& box;
    forms::TextBox& line;
    const forms::ControlArray<forms::OptionButton>& events;
    forms::Button& pass;
};

/// The controls of a stop: a group if its frame has a caption.
QWidget* makeFrame(const PanelWidgets& widgets, forms::Frame& frame, QWidget* parent) {
    if (frame.caption().empty()) {
        auto* plain = new QWidget(parent);
        widgets.binder.bind(frame, *plain);
        return plain;
    }
    return widgets.binder.make<QGroupBox>(frame, parent);
}

QWidget* makeStop(const PanelWidgets& widgets, const Stop& stop, QWidget* parent) {
    Binder& binder = widgets.binder;
    QWidget* part = makeFrame(widgets, stop.frame, parent);
    auto* grid = new QGridLayout(part);
    if (stop.frame.caption().empty())
        grid->setContentsMargins(0, 0, 0, 0);
    auto* box = binder.make<QCheckBox>(stop.box, part);
    const bool isLong = box->text().size() > 20; // it takes the whole line
    grid->addWidget(box, 0, 0, 1, isLong ? 4 : 2);
    const QString about =
        textOf(stop.frame.caption().empty() ? stop.box.caption() : stop.frame.caption());
    auto* line = widgets.entry(stop.line, "line", about + ", line", part);
    PanelWidgets::keepRoom(*line);
    if (isLong)
        line->setMaximumWidth(line->minimumWidth());
    grid->addWidget(line, isLong ? 1 : 0, 2);
    for (const int event : {0, 1}) {
        auto* option = binder.make<QRadioButton>(stop.events(event), part);
        PanelWidgets::keepRoom(*option);
        grid->addWidget(option, 1, event);
    }
    QPushButton* pass = PanelWidgets::button(binder, stop.pass, part);
    pass->setAccessibleName(pass->text() + " " + about);
    grid->addWidget(pass, 1, isLong ? 3 : 2);
    // Both parts have the same columns.
    if (!isLong)
        for (const int column : {0, 1})
            grid->setColumnMinimumWidth(column, part->fontMetrics().averageCharWidth() * 13);
    grid->setColumnStretch(2, 1);
    return part;
}

QWidget* makeStops(const PanelWidgets& widgets, SequenceStops& stops, bool acts, QWidget* parent) {
    auto* box = new QGroupBox("Stop behind a line and wait for the chip", parent);
    auto* column = new QVBoxLayout(box);
    column->addWidget(
        makeStop(widgets,
                 {stops.frame_Condition(0), stops.Ch_FirstCondition, stops.Text_FirstCondition,
                  stops.R_Condition1, stops.Cm_PassCondition1},
                 box));
    column->addWidget(
        makeStop(widgets,
                 {stops.frame_Condition(1), stops.Ch_SecondCondition, stops.Text_SecondCondition,
                  stops.R_Condition2, stops.Cm_PassCondition2},
                 box));
    if (!acts)
        column->addWidget(PanelWidgets::note("A run does not stop at these conditions.", box));
    return box;
}

} // namespace

void addStopExtras(PanelForm& form, const PanelWidgets& widgets, PanelExtras& extras) {
    if (auto* stops = form.findPart<SequenceStops>())
        extras.sequence.groups.emplace_back(
            [widgets, stops, acts = form.chip().sequence.stops.acts](QWidget* parent) {
                return makeStops(widgets, *stops, acts, parent);
            });
}

} // namespace bitlux::gui
