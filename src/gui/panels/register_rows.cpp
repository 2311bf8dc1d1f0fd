#include "gui/panels/register_rows.h"

#include <algorithm>

namespace bitlux::gui {

namespace {

constexpr qreal titleScale = 1.1;
constexpr qreal rowPartScale = 1.0;

/// The bits on whose left side a field of a register begins or ends.
std::uint64_t edgesOf(const chips::Register& shown) {
    std::uint64_t edges = 0;
    for (const chips::Field& field : shown.fields)
        edges |= field.bits.mask() ^ field.bits.mask() >> 1;
    return edges;
}

/// A view that shows the written value has its fields; other views do not.
std::uint64_t edgesOf(const chips::Register& owner, const chips::View& view) {
    const bool readsBack = view.operation == chips::Operation::Read && view.extra == 0 &&
                           view.address == owner.address;
    return readsBack ? edgesOf(owner) : RowGrid::noFields;
}

const char* accessOf(const chips::Register& shown) {
    switch (shown.access) {
    case chips::Access::ReadOnly:
        return ", read only";
    case chips::Access::WriteOnly:
        return ", write only";
    case chips::Access::ReadClears:
        return ", cleared by reading";
    case chips::Access::WriteOneClears:
        return ", cleared by writing ones";
    default:
        return "";
    }
}

} // namespace

QString titleOf(const chips::Chip& chip, const chips::Register& shown) {
    QString title = textOf(shown.title);
    if (!chip.word.address.empty())
        title +=
            " at 0x" + QString::number(shown.address, 16).toUpper().rightJustified(2, QChar('0'));
    return title + accessOf(shown);
}

RegisterRows::RegisterRows(const chips::Chip& chip, const Registers& registers,
                           const PageExtras& extras, const PanelWidgets& widgets, QWidget* parent)
    : RowGrid(widgets, parent), chip_(chip) {
    if (registers.size() == 1)
        addRegister(*registers.front(), extras);
    else
        addSharing(registers, extras);
    for (const PageExtras::Row& row : extras.rows) {
        const Start start = buttons(row.button, "", textOf(registers.front()->title));
        addRow({start}, bits(row.bits), edgesOf(*registers.front()));
    }
    addButtons(extras.buttons);
    alignCells();
}

void RegisterRows::addRegister(const chips::Register& shown, const PageExtras& extras) {
    addTitle(titleOf(chip_, shown), titleScale);
    addNote(shown.note);
    const ControlRef append =
        shown.writeLine.button.exists() ? shown.writeLine.button : extras.besideWrite;
    Starts starts;
    if (shown.writeButton.exists() || !append.name.empty())
        starts.push_back(buttons(shown.writeButton, append, textOf(shown.title)));
    if (shown.row.exists()) {
        addReads(shown, shown.row, starts);
        addRow(starts, bits(shown.row.first, BitRow::Use::Clicked), edgesOf(shown));
        if (shown.hexBox.exists())
            addHexBox(shown);
    } else {
        addRow(starts, nullptr);
    }
    addViews(shown, {});
}

void RegisterRows::addHexBox(const chips::Register& shown) {
    const QString caption = textOf(shown.title).replace('_', ' ') + " Hex Value:";
    QLineEdit* edit = entry(shown.row.first, shown.hexBox, caption);
    auto* label = new QLabel(caption, owner());
    label->setBuddy(edit);
    auto* line = new QHBoxLayout;
    line->setSpacing(horizontalSpacing());
    line->addWidget(label);
    edit->setMaximumWidth(edit->fontMetrics().horizontalAdvance(rowButtonRoom) + 14);
    line->addWidget(edit);
    line->addWidget(buttons(shown.hexButton, "", textOf(shown.title)).first);
    line->addStretch();
    addLayout(line, rowCount(), 0, 1, columnCount());
}

void RegisterRows::addSharing(const Registers& registers, const PageExtras& extras) {
    const chips::Register& first = *registers.front();
    addTitle(textOf(first.page), titleScale);
    Start write{.first = extras.entry ? extras.entry(owner()) : nullptr};
    write.second = buttons("", extras.besideWrite, {}).second;
    addRow({write}, bits(first.row.first, BitRow::Use::Clicked), edgesOf(first));
    for (const chips::Register* shown : registers)
        addSharer(*shown);
}

void RegisterRows::addSharer(const chips::Register& shown) {
    addTitle(titleOf(chip_, shown), rowPartScale);
    addNote(shown.note);
    const QString about = textOf(shown.title);
    const std::vector<const chips::Row*> rows = viewRows(shown);
    const Views views = rows.empty() ? Views() : viewsIn(shown, *rows.front());
    const bool isShort = views.size() == 1 && !shown.writeLine.button.exists() &&
                         !views.front()->line.button.exists();
    if (isShort) {
        const chips::View& only = *views.front();
        const Start both = buttons(shown.writeButton, only.button, about);
        addRow({both}, bits(only.row.first, BitRow::Use::Shown), edgesOf(shown, only));
        return;
    }
    Starts starts{buttons(shown.writeButton, shown.writeLine.button, about)};
    addReads(shown, shown.row, starts);
    if (rows.empty())
        addRow(starts, nullptr);
    else
        addViews(shown, std::move(starts));
}

void RegisterRows::addViews(const chips::Register& shown, Starts starts) {
    std::string group;
    for (const chips::Row* row : viewRows(shown)) {
        const chips::View& first = *viewsIn(shown, *row).front();
        if (!first.group.empty() && first.group != group)
            addTitle(textOf(first.group), rowPartScale);
        group = first.group;
        addReads(shown, *row, starts);
        addRow(starts, bits(row->first, BitRow::Use::Shown), edgesOf(shown, first));
        starts.clear();
    }
}

void RegisterRows::addReads(const chips::Register& owner, const chips::Row& row, Starts& starts) {
    for (const chips::View* view : viewsIn(owner, row)) {
        // Views below a heading of their own are named by their rows.
        const std::string& about = view->group.empty() ? owner.title : row.first.name;
        starts.push_back(buttons(view->button, view->line.button, textOf(about).replace('_', ' ')));
    }
}

std::vector<const chips::Row*> RegisterRows::viewRows(const chips::Register& shown) const {
    std::vector<const chips::Row*> rows;
    for (const chips::View* view : ownViews(chip_, shown)) {
        const bool isThere = view->row.first == shown.row.first ||
                             std::any_of(rows.begin(), rows.end(), [view](const chips::Row* row) {
                                 return row->first == view->row.first;
                             });
        if (view->row.exists() && !isThere)
            rows.push_back(&view->row);
    }
    return rows;
}

RegisterRows::Views RegisterRows::viewsIn(const chips::Register& owner,
                                          const chips::Row& row) const {
    Views views;
    for (const chips::View* view : ownViews(chip_, owner))
        if (view->row.first == row.first)
            views.push_back(view);
    return views;
}

} // namespace bitlux::gui
