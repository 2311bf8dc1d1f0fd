#include "gui/register_page_view.h"

#include "gui/group_flow.h"
#include "gui/sheet.h"
#include "gui/theme.h"
#include "panels/common/field_text.h"

#include <algorithm>

namespace bitlux::gui {

namespace {

constexpr int columns = 3;
constexpr unsigned noFields = 0;

QString textOf(std::string_view text) {
    return QString::fromUtf8(text.data(), static_cast<qsizetype>(text.size()));
}

/// The bits on the left of which a field of a register begins or ends.
unsigned edgesOf(const oldchips::Register& shown) {
    unsigned edges = 0;
    const auto add = [&edges](unsigned field) { edges |= field ^ field >> 1; };
    for (const oldchips::OptionField& field : shown.options)
        add(((1U << field.width) - 1) << field.lowBit);
    for (const oldchips::CheckBit& check : shown.checks)
        add(1U << check.bit);
    for (const oldchips::ComboField& field : shown.combos) {
        unsigned bits = 0;
        for (const int bit : field.bitOfIndexBit)
            bits |= 1U << bit;
        add(bits);
    }
    return edges;
}

} // namespace

void setLines(QVBoxLayout& group) {
    group.setContentsMargins(9, 6, 9, 6);
    group.setSpacing(1);
}

RegisterPageView::RegisterPageView(std::span<const oldchips::Register> registers,
                                   const PageParts& parts, const PanelWidgets& widgets,
                                   QWidget* parent)
    : QWidget(parent), widgets_(widgets), rows_(new QGridLayout) {
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(8);
    layout->addLayout(rows_);
    rows_->setVerticalSpacing(4);
    rows_->setHorizontalSpacing(4);
    rows_->setColumnStretch(columns - 1, 1);
    addTitle(registers);
    if (registers.size() == 1)
        addRegister(registers.front(), parts);
    else
        addSharing(registers, parts);
    addButtons(parts.buttons);
    makeChoices();
    addCombos(registers.front());
    for (const oldchips::OptionField& field : registers.front().options)
        addOptions(field);
    addChecks(registers.front());
    if (parts.group)
        flow_->addWidget(parts.group(choices_));
}

void RegisterPageView::addTitle(std::span<const oldchips::Register> registers) {
    QStringList parts;
    for (const oldchips::Register& shown : registers)
        parts << textOf(shown.title) + " at 0x" +
                     QString::number(shown.address, 16).toUpper().rightJustified(2, '0');
    auto* title = new QLabel(parts.join(",  "), this);
    QFont bold = scaled(title->font(), 1.1);
    bold.setBold(true);
    title->setFont(bold);
    rows_->addWidget(title, 0, 0, 1, columns);
}

void RegisterPageView::addRegister(const oldchips::Register& shown, const PageParts& parts) {
    const oldchips::ControlName& append =
        shown.sequenceButton.exists() ? shown.sequenceButton : parts.besideWrite;
    const RowStart write = buttons(shown.writeButton, append, textOf(shown.title));
    addRow(*widgets_.row(shown.writeLabels, BitRow::Use::Clicked, this), write, edgesOf(shown));
    addView(shown, shown.low);
    if (shown.high.exists())
        addView(shown, shown.high);
    if (!parts.bits.empty()) {
        const RowStart read = buttons(parts.readBits, {}, textOf(shown.title));
        addRow(*new BitRow(parts.bits, BitRow::Use::Shown, widgets_.binder, this), read,
               edgesOf(shown));
    }
}

void RegisterPageView::addSharing(std::span<const oldchips::Register> registers,
                                  const PageParts& parts) {
    RowStart write{.first = parts.entry(this)};
    write.second = buttons({}, parts.besideWrite, {}).second;
    addRow(*widgets_.row(registers.front().writeLabels, BitRow::Use::Clicked, this), write,
           noFields);
    for (const oldchips::Register& shown : registers) {
        const RowStart both = buttons(shown.writeButton, shown.low.readButton, textOf(shown.title));
        addRow(*widgets_.row(shown.low.labels, BitRow::Use::Shown, this), both, noFields);
    }
}

void RegisterPageView::addView(const oldchips::Register& shown, const oldchips::ReadView& view) {
    const RowStart read = buttons(view.readButton, view.sequenceButton, textOf(shown.title));
    // The high view shows something else.
    addRow(*widgets_.row(view.labels, BitRow::Use::Shown, this), read,
           &view == &shown.low ? edgesOf(shown) : noFields);
}

void RegisterPageView::addRow(BitRow& bits, const RowStart& start, unsigned fieldEdges) {
    const int line = rows_->rowCount();
    if (start.first != nullptr)
        rows_->addWidget(start.first, line, 0);
    if (start.second != nullptr)
        rows_->addWidget(start.second, line, 1);
    bits.markFields(fieldEdges);
    rows_->addWidget(&bits, line, 2);
}

RegisterPageView::RowStart RegisterPageView::buttons(const oldchips::ControlName& first,
                                                     const oldchips::ControlName& second,
                                                     const QString& about) {
    RowStart start;
    if (first.exists()) {
        RowButton* button = widgets_.rowButton(first, this, about);
        button->setRoomFor(rowButtonRoom);
        start.first = button;
    }
    if (second.exists()) {
        RowButton* button = widgets_.rowButton(second, this, about);
        button->setRoomFor(appendButtonRoom);
        start.second = button;
    }
    return start;
}

void RegisterPageView::addButtons(const std::vector<oldchips::ControlName>& names) {
    if (names.size() == 1) { // does what those above it do
        rows_->addWidget(buttons({}, names.front(), {}).second, rows_->rowCount(), 1);
        return;
    }
    if (names.empty())
        return;
    auto* line = new QHBoxLayout;
    line->setSpacing(rows_->horizontalSpacing());
    for (const oldchips::ControlName& name : names)
        line->addWidget(widgets_.rowButton(name, this));
    line->addStretch();
    rows_->addLayout(line, rows_->rowCount(), 0, 1, columns);
}

void RegisterPageView::makeChoices() {
    auto* sheet = new Sheet(this);
    choices_ = sheet->widget();
    auto* column = new QVBoxLayout(choices_);
    column->setContentsMargins(0, 0, 0, 0);
    flow_ = new GroupFlow;
    column->addLayout(flow_);
    column->addStretch(1);
    layout()->addWidget(sheet);
}

void RegisterPageView::addOptions(const oldchips::OptionField& field) {
    auto* box = new QGroupBox(QString::fromStdString(fieldTitle(field)), choices_);
    if (field.frame.exists())
        widgets_.binder.bind(widgets_.controls.get<forms::Frame>(field.frame), *box);
    auto* column = new QVBoxLayout(box);
    setLines(*column);
    for (int value = 0; value < static_cast<int>(field.captions.size()); ++value)
        column->addWidget(widgets_.make<QRadioButton, forms::OptionButton>(
            {field.options, field.firstOption + value}, box));
    column->addStretch();
    flow_->addWidget(box);
}

void RegisterPageView::addChecks(const oldchips::Register& shown) {
    if (shown.checks.empty())
        return;
    auto* box = new QGroupBox("Single bits", choices_);
    auto* column = new QVBoxLayout(box);
    setLines(*column);
    std::vector<oldchips::CheckBit> checks(shown.checks.begin(), shown.checks.end());
    std::sort(checks.begin(), checks.end(), [](const auto& one, const auto& other) {
        return one.bit > other.bit; // as the row above
    });
    for (const oldchips::CheckBit& check : checks)
        column->addWidget(widgets_.make<QCheckBox, forms::CheckBox>(check.box, box));
    column->addStretch();
    flow_->addWidget(box);
}

void RegisterPageView::addCombos(const oldchips::Register& shown) {
    for (const oldchips::ComboField& field : shown.combos) {
        auto* box = new QGroupBox(QString::fromStdString(fieldTitle(field)), choices_);
        auto* combo = widgets_.make<QComboBox, forms::ComboBox>({field.combo}, box);
        combo->setPlaceholderText("not chosen");
        combo->setAccessibleName(textOf(field.prompt).trimmed());
        combo->setMinimumWidth(combo->fontMetrics().averageCharWidth() * 30);
        (new QVBoxLayout(box))->addWidget(combo);
        flow_->addWidget(box);
    }
}

} // namespace bitlux::gui
