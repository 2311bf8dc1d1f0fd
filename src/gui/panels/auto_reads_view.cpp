#include "gui/panels/auto_reads_view.h"

#include "gui/panels/sheet.h"

#include <QGridLayout>
#include <QGroupBox>

namespace bitlux::gui {

namespace {

QWidget* makePage(AutoReads& reads, const PanelWidgets& widgets, QWidget* parent) {
    auto* sheet = new Sheet(parent);
    auto* column = new QVBoxLayout(sheet->widget());
    column->setContentsMargins(0, 0, 0, 0);
    column->addWidget(makeAutoReads(reads, widgets.binder, sheet->widget()));
    column->addStretch();
    return sheet;
}

/// The first of some boxes that all do the same.
void addFirst(const std::vector<int>& boxes, AutoReads& reads, const PanelWidgets& widgets,
              PanelExtras& extras) {
    for (const int box : boxes)
        if (box != boxes.front())
            extras.copies.push_back(&reads.boxes(box));
    if (!boxes.empty())
        extras.reads.emplace_back([widgets, &reads, box = boxes.front()](QWidget* parent) {
            return widgets.binder.make<QCheckBox>(reads.boxes(box), parent);
        });
}

} // namespace

QWidget* makeAutoReads(AutoReads& reads, Binder& binder, QWidget* parent) {
    const chips::AutomaticReads& style = reads.style();
    auto* box = new QGroupBox(
        QString("Read every %1 ms, while \"Auto reading\" is ticked above").arg(style.interval),
        parent);
    auto* grid = new QGridLayout(box);
    grid->setVerticalSpacing(3);
    constexpr int lines = 6;
    constexpr int groupSpacing = 20;
    int column = 0;
    for (std::size_t group = 0; group < std::max<std::size_t>(style.groups.size(), 1); ++group) {
        if (column > 0)
            grid->setColumnMinimumWidth(column++, groupSpacing);
        if (group < style.groups.size())
            grid->addWidget(binder.make<QCheckBox>(reads.boxes(style.groups[group].box), box), 0,
                            column);
        const std::vector<int> shown = reads.boxesOf(group);
        for (int place = 0; const int read : shown) {
            grid->addWidget(binder.make<QCheckBox>(reads.boxes(read), box), 1 + place % lines,
                            column + place / lines);
            grid->setColumnStretch(column + place / lines, 1); // all have the same width
            ++place;
        }
        column += (static_cast<int>(shown.size()) + lines - 1) / lines;
    }
    return box;
}

void addAutoReadExtras(PanelForm& form, const PanelWidgets& widgets, PanelExtras& extras) {
    auto* reads = form.findPart<AutoReads>();
    if (reads == nullptr)
        return;
    addFirst(reads->style().switches, *reads, widgets, extras);
    addFirst(reads->style().recorders, *reads, widgets, extras);
    extras.pages["automatic reads"] = [widgets, reads](QWidget* parent) {
        return makePage(*reads, widgets, parent);
    };
}

} // namespace bitlux::gui
