#include "gui/panels/panel_side_view.h"

#include <algorithm>

namespace bitlux::gui {

namespace {

constexpr int sideSpacing = 4;
constexpr qreal headingScale = 1.1;
const std::string statusPlace(chips::statusPage);

QString headingOf(const chips::Chip& chip) {
    for (const chips::Sheet& sheet : chip.sheets)
        if (sheet.page == statusPlace && !sheet.title.empty())
            return textOf(sheet.title);
    return "Flags";
}

} // namespace

PanelSideView::PanelSideView(PanelForm& form, const PanelExtras& extras,
                             const PanelWidgets& widgets, QWidget* parent)
    : Sheet(parent), form_(form), widgets_(widgets) {
    auto* column = new QVBoxLayout(widget());
    column->setContentsMargins(0, 0, sideSpacing, 0);
    column->setSpacing(sideSpacing);
    column->addWidget(PanelWidgets::heading(headingOf(form.chip()), headingScale, widget()));
    column->addWidget(makeReads());
    if (form.chip().word.status.width() > 0)
        addStatus(*column);
    for (const PlacedView& placed : guestsOn(form.chip(), statusPlace))
        addView(placed, *column);
    alignRows();
    for (const MakeWidget& make : extras.reads)
        column->addWidget(make(widget()));
    column->addStretch(1);
    setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    setFixedWidth(widget()->minimumSizeHint().width() +
                  style()->pixelMetric(QStyle::PM_ScrollBarExtent));
}

QWidget* PanelSideView::makeReads() {
    auto* line = new QWidget(widget());
    auto* row = new QHBoxLayout(line);
    row->setContentsMargins(0, 0, 0, 0);
    for (const Action& action : actionsOn(form_.chip(), statusPlace))
        for (const chips::ControlName* button : {action.button, action.append})
            if (button->exists())
                row->addWidget(widgets_.rowButton(*button, line, textOf(*action.group)));
    row->addStretch();
    return line;
}

void PanelSideView::addStatus(QVBoxLayout& column) {
    const chips::WordFormat& word = form_.chip().word;
    auto* line = new QHBoxLayout;
    column.addLayout(line);
    auto* bits = new BitRow(form_.pageControls.row(word.status.first), BitRow::Use::Shown,
                            widgets_.binder, widget());
    bits->numberFrom(word.statusFirst);
    addRow(*line, "Status", {}, *bits);
}

void PanelSideView::addView(const PlacedView& placed, QVBoxLayout& column) {
    const chips::View& view = *placed.view;
    const QString title = textOf(view.group.empty() ? placed.owner->title : view.group);
    auto* box = new QWidget(widget());
    if (view.frame.exists())
        widgets_.binder.bind(widgets_.controls.get<forms::Frame>(view.frame), *box);
    auto* line = new QHBoxLayout(box);
    line->setContentsMargins(0, 0, 0, 0);
    std::vector<QWidget*> buttons;
    for (const chips::ControlName* button : {&view.button, &view.line.button})
        if (button->exists())
            buttons.push_back(widgets_.rowButton(*button, box, title));
    auto* bits =
        new BitRow(widgets_.controls.row(view.row.first), BitRow::Use::Shown, widgets_.binder, box);
    addRow(*line, title, buttons, *bits);
    column.addWidget(box);
}

void PanelSideView::addRow(QBoxLayout& line, const QString& title,
                           const std::vector<QWidget*>& buttons, BitRow& bits) {
    line.setSpacing(sideSpacing);
    titles_.push_back(new QLabel(title, bits.parentWidget()));
    line.addWidget(titles_.back());
    for (QWidget* button : buttons)
        line.addWidget(button);
    line.addStretch();
    line.addWidget(&bits);
    rows_.push_back(&bits);
}

void PanelSideView::alignRows() {
    int title = 0;
    for (const QWidget* any : titles_)
        title = std::max(title, any->sizeHint().width());
    for (QWidget* any : titles_)
        any->setMinimumWidth(title);
    constexpr int letters = 9; // of a caption, of average width
    int cell = fontMetrics().averageCharWidth() * letters;
    for (const BitRow* row : rows_)
        cell = std::max(cell, row->readableCellWidth());
    const int value = fontMetrics().horizontalAdvance("0x00");
    for (BitRow* row : rows_) {
        row->setLongestLine(row->size());
        row->setValueWidth(value);
        row->setFixedWidth(row->size() * cell + value);
    }
}

} // namespace bitlux::gui
