#include "gui/panels/row_grid.h"

#include <algorithm>
#include <map>

#include <QHBoxLayout>

namespace bitlux::gui {

namespace {

constexpr int gridColumns = 3; ///< two of buttons, one of bits
constexpr int narrowBits = 16; ///< more bits need the whole width, below their buttons

} // namespace

RowGrid::RowGrid(const PanelWidgets& widgets, QWidget* parent)
    : widgets_(widgets), parent_(parent) {
    setContentsMargins(0, 0, 0, 0);
    setVerticalSpacing(4);
    setHorizontalSpacing(4);
    setColumnStretch(gridColumns - 1, 1);
}

void RowGrid::addTitle(const QString& text, qreal scale) {
    addWidget(PanelWidgets::heading(text, scale, parent_), rowCount(), 0, 1, gridColumns);
}

void RowGrid::addNote(const std::string& text) {
    if (!text.empty())
        addWidget(PanelWidgets::note(text, parent_), rowCount(), 0, 1, gridColumns);
}

RowGrid::Start RowGrid::buttons(const ControlRef& first, const ControlRef& second,
                                const QString& about) {
    Start start;
    if (!first.name.empty()) {
        RowButton* button = widgets_.rowButton(first, parent_, about);
        button->setRoomFor(rowButtonRoom);
        start.first = button;
    }
    if (!second.name.empty()) {
        RowButton* button = widgets_.rowButton(second, parent_, about);
        button->setRoomFor(appendButtonRoom);
        start.second = button;
    }
    return start;
}

BitRow* RowGrid::bits(const ControlRef& first, BitRow::Use use) const {
    const LabelRow& row = widgets_.controls.row(first);
    if (widgets_.binder.isBound(row.label(0)))
        return nullptr;
    return new BitRow(row, use, widgets_.binder, parent_);
}

QLineEdit* RowGrid::entry(const ControlRef& row, const chips::ControlName& box,
                          const QString& name) const {
    forms::Form& form = widgets_.controls.row(row).label(0).form();
    return widgets_.entry(dynamic_cast<forms::TextBox&>(form.control(text(box))), "hex", name,
                          parent_);
}

void RowGrid::addRow(const Starts& starts, BitRow* bits, std::uint64_t fieldEdges) {
    const int first = rowCount();
    const bool isWide = bits != nullptr && bits->size() > narrowBits;
    const int lines = isWide ? addSideBySide(starts, first) : addBelow(starts, first);
    if (bits == nullptr)
        return;
    bits->markFields(fieldEdges);
    if (isWide)
        addWidget(bits, first + lines, 0, 1, gridColumns);
    else if (!hasButtons_)
        addWidget(bits, first, 0, 1, gridColumns);
    else
        addWidget(bits, first, gridColumns - 1, std::max(lines, 1), 1);
    rows_.push_back(bits);
}

int RowGrid::addBelow(const Starts& starts, int line) {
    const int first = line;
    for (const Start& start : starts) {
        hasButtons_ = hasButtons_ || start.first != nullptr || start.second != nullptr;
        if (start.first != nullptr)
            addWidget(start.first, line, 0);
        if (start.second != nullptr)
            addWidget(start.second, line, 1);
        ++line;
    }
    return line - first;
}

int RowGrid::addSideBySide(const Starts& starts, int line) {
    if (starts.empty())
        return 0;
    addBelow({starts.front()}, line);
    auto* further = new QHBoxLayout;
    further->setSpacing(horizontalSpacing());
    for (std::size_t i = 1; i < starts.size(); ++i)
        for (QWidget* button : {starts[i].first, starts[i].second})
            if (button != nullptr)
                further->addWidget(button);
    further->addStretch();
    addLayout(further, line, gridColumns - 1);
    return 1;
}

void RowGrid::addButtons(const std::vector<chips::ControlName>& names) {
    if (names.empty())
        return;
    if (names.size() == 1) { // does the same as the one above
        addRow({buttons("", names.front(), {})}, nullptr);
        return;
    }
    auto* line = new QHBoxLayout;
    line->setSpacing(horizontalSpacing());
    for (const chips::ControlName& name : names)
        line->addWidget(widgets_.rowButton(name, parent_));
    line->addStretch();
    addLayout(line, rowCount(), 0, 1, gridColumns);
}

void RowGrid::alignCells() const {
    std::map<int, int> widest; // by the number of bits
    for (const BitRow* row : rows_)
        widest[row->size()] = std::max(widest[row->size()], row->leastCellWidth());
    int values = 0;
    for (const BitRow* row : rows_)
        values = std::max(values, row->valueWidth());
    for (BitRow* row : rows_) {
        row->setLeastCellWidth(widest[row->size()]);
        row->setValueWidth(values);
    }
}

} // namespace bitlux::gui
