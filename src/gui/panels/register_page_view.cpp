#include "gui/panels/register_page_view.h"

#include "gui/panels/field_groups.h"
#include "gui/panels/flags_view.h"
#include "gui/panels/register_rows.h"
#include "gui/panels/sheet.h"

#include <utility>

namespace bitlux::gui {

namespace {

constexpr int pageSpacing = 8;
constexpr qreal pagePartScale = 1.1;

/// A flow of groups at the end of a column.
GroupFlow& addFlow(QVBoxLayout& column) {
    auto* flow = new GroupFlow;
    column.addLayout(flow);
    return *flow;
}

QVBoxLayout* columnOf(QWidget* widget) {
    auto* column = new QVBoxLayout(widget);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(pageSpacing);
    return column;
}

} // namespace

RegisterPageView::RegisterPageView(const chips::Chip& chip, const std::string& page,
                                   const PageExtras& extras, const PanelWidgets& widgets,
                                   QWidget* parent)
    : QWidget(parent), chip_(chip), page_(page), extras_(extras), widgets_(widgets) {
    const std::vector<Registers> sections = registersOn(chip, page);
    const bool isSingle = sections.size() == 1 && guestsOn(chip, page).empty();
    if (isSingle && (keepsRowsInSight(sections.front()) || !hasRows(sections.front())))
        addSingle(*sections.front().front());
    else
        addSheet(sections);
}

bool RegisterPageView::hasRows(const Registers& registers) const {
    return registers.front()->row.exists() || !ownViews(chip_, *registers.front()).empty();
}

bool RegisterPageView::keepsRowsInSight(const Registers& registers) const {
    constexpr int mostLines = 5;
    constexpr int bitsInLine = 16; // in a small window
    const chips::Register& shown = *registers.front();
    int lines = 0;
    for (const chips::View* view : ownViews(chip_, shown))
        lines += (view->row.width() - 1) / bitsInLine + 1;
    if (shown.row.exists())
        lines += (shown.width() - 1) / bitsInLine + 1;
    return registers.size() == 1 && lines > 0 && lines <= mostLines;
}

void RegisterPageView::addSingle(const chips::Register& shown) {
    auto* layout = columnOf(this);
    layout->addLayout(new RegisterRows(chip_, {&shown}, extras_, widgets_, this));
    auto* sheet = new Sheet(this);
    QWidget* choices = sheet->widget();
    auto* column = columnOf(choices);
    GroupFlow& flow = addFlow(*column);
    FieldGroups groups(widgets_, choices, flow);
    groups.add(shown);
    groups.add(actionsOn(chip_, page_));
    for (const MakeWidget& make : extras_.groups)
        flow.addWidget(make(choices));
    column->addStretch(1);
    layout->addWidget(sheet, 1);
}

void RegisterPageView::addSheet(const std::vector<Registers>& sections) {
    auto* layout = columnOf(this);
    auto* sheet = new Sheet(this);
    layout->addWidget(sheet);
    QWidget* content = sheet->widget();
    auto* column = columnOf(content);
    GroupFlow* whole = nullptr; // of successive registers without rows
    for (const Registers& section : sections) {
        if (hasRows(section)) {
            whole = nullptr;
            addSection(section, *column, content);
            continue;
        }
        if (whole == nullptr)
            whole = &addFlow(*column);
        FieldGroups(widgets_, content, *whole)
            .addWhole(*section.front(), titleOf(chip_, *section.front()));
    }
    addGuests(*column, content);
    addRest(*column, content);
    column->addStretch(1);
}

void RegisterPageView::addSection(const Registers& registers, QVBoxLayout& column,
                                  QWidget* parent) {
    static const PageExtras none;
    const bool isFirst = registersOn(chip_, page_).front() == registers;
    column.addLayout(
        new RegisterRows(chip_, registers, isFirst ? extras_ : none, widgets_, parent));
    GroupFlow& flow = addFlow(column);
    FieldGroups groups(widgets_, parent, flow);
    for (const chips::Register* shown : registers)
        groups.add(*shown);
    column.addSpacing(pageSpacing);
}

void RegisterPageView::addGuests(QVBoxLayout& column, QWidget* parent) {
    const std::vector<PlacedView> guests = guestsOn(chip_, page_);
    if (guests.empty())
        return;
    auto* grid = new RowGrid(widgets_, parent);
    column.addLayout(grid);
    addViewGroups(guests, pagePartScale, *grid);
}

void RegisterPageView::addRest(QVBoxLayout& column, QWidget* parent) {
    GroupFlow& flow = addFlow(column);
    FieldGroups(widgets_, parent, flow).add(actionsOn(chip_, page_));
    for (const MakeWidget& make : extras_.groups)
        flow.addWidget(make(parent));
}

} // namespace bitlux::gui
