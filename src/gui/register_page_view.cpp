#include "gui/register_page_view.h"

#include "gui/theme.h"

#include <QScrollArea>

namespace bitlux::gui {

namespace {

constexpr int buttonSpacing = 4;
constexpr int choiceWidth = 135; ///< of a row of groups, in characters

QString textOf(std::string_view text) {
    return QString::fromUtf8(text.data(), static_cast<qsizetype>(text.size()));
}

} // namespace

void addButtons(QBoxLayout& layout, const PanelWidgets& widgets, QWidget* parent,
                std::initializer_list<chips::ControlName> names) {
    for (const chips::ControlName& name : names)
        if (name.exists())
            layout.addWidget(widgets.button(name, parent));
}

RegisterPageView::RegisterPageView(std::span<const chips::Register> registers,
                                   const PanelWidgets& widgets, QWidget* parent)
    : QWidget(parent), widgets_(widgets), rows_(new QGridLayout) {
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addLayout(rows_);
    rows_->setVerticalSpacing(4);
    rows_->setColumnStretch(1, 1);
    makeChoices();
    addTitle(registers);
    if (registers.size() == 1)
        addRegister(registers.front());
    else
        addSharing(registers);
}

void RegisterPageView::addRegister(const chips::Register& shown) {
    addRow(shown.writeLabels, BitRow::Use::Clicked, {shown.writeButton, shown.sequenceButton});
    for (const chips::ReadView* view : {&shown.low, &shown.high})
        if (view->exists())
            addRow(view->labels, BitRow::Use::Shown, {view->readButton, view->sequenceButton});
    addCombos(shown);
    for (const chips::OptionField& field : shown.options)
        addOptions(field);
    addChecks(shown);
}

void RegisterPageView::addSharing(std::span<const chips::Register> registers) {
    addRow(registers.front().writeLabels, BitRow::Use::Clicked, {});
    for (const chips::Register& shown : registers)
        addRow(shown.low.labels, BitRow::Use::Shown, {shown.writeButton, shown.low.readButton});
}

void RegisterPageView::makeChoices() {
    auto* scroll = new QScrollArea(this);
    scroll->setWidgetResizable(true);
    scroll->setFrameShape(QFrame::NoFrame);
    scroll->setFocusPolicy(Qt::NoFocus);
    choices_ = new QWidget(scroll);
    auto* column = new QVBoxLayout(choices_);
    column->setContentsMargins(0, 4, 0, 0);
    choiceRows_ = new QVBoxLayout;
    column->addLayout(choiceRows_);
    column->addStretch();
    scroll->setWidget(choices_);
    layout()->addWidget(scroll);
}

void RegisterPageView::addTitle(std::span<const chips::Register> registers) {
    QStringList parts;
    for (const chips::Register& shown : registers)
        parts << textOf(shown.title) + " at 0x" +
                     QString::number(shown.address, 16).toUpper().rightJustified(2, '0');
    auto* title = new QLabel(parts.join(",  "), this);
    QFont bold = scaled(title->font(), 1.1);
    bold.setBold(true);
    title->setFont(bold);
    rows_->addWidget(title, 0, 0, 1, 2);
}

void RegisterPageView::addRow(std::string_view labels, BitRow::Use use,
                              std::initializer_list<chips::ControlName> buttons) {
    const int line = rows_->rowCount();
    auto* left = new QHBoxLayout;
    left->setSpacing(buttonSpacing);
    addButtons(*left, widgets_, this, buttons);
    rows_->addLayout(left, line, 0);
    rows_->addWidget(widgets_.row(labels, use, this), line, 1);
}

void RegisterPageView::addWriteButtons(std::initializer_list<chips::ControlName> names) {
    auto* line = new QHBoxLayout;
    line->setSpacing(buttonSpacing);
    addButtons(*line, widgets_, this, names);
    line->addStretch();
    rows_->addLayout(line, rows_->rowCount(), 0, 1, 2);
}

void RegisterPageView::addOptions(const chips::OptionField& field) {
    auto* box = new QGroupBox(textOf(field.title), choices_);
    if (field.frame.exists())
        widgets_.binder.bind(widgets_.controls.get<forms::Frame>(field.frame), *box);
    auto* column = new QVBoxLayout(box);
    column->setSpacing(2);
    for (int value = 0; value < static_cast<int>(field.captions.size()); ++value)
        column->addWidget(widgets_.make<QRadioButton, forms::OptionButton>(
            {field.options, field.firstOption + value}, box));
    column->addStretch();
    addChoice(box);
}

void RegisterPageView::addChecks(const chips::Register& shown) {
    if (shown.checks.empty())
        return;
    auto* box = new QGroupBox("Single bits", choices_);
    auto* column = new QVBoxLayout(box);
    column->setSpacing(2);
    for (const chips::CheckBit& check : shown.checks)
        column->addWidget(widgets_.make<QCheckBox, forms::CheckBox>(check.box, box));
    column->addStretch();
    addChoice(box);
}

void RegisterPageView::addCombos(const chips::Register& shown) {
    for (const chips::ComboField& field : shown.combos) {
        auto* box = new QGroupBox(textOf(field.prompt).trimmed(), choices_);
        auto* combo = widgets_.make<QComboBox, forms::ComboBox>({field.combo}, box);
        combo->setPlaceholderText("not chosen");
        combo->setAccessibleName(textOf(field.prompt).trimmed());
        combo->setMinimumWidth(combo->fontMetrics().averageCharWidth() * 30);
        (new QVBoxLayout(box))->addWidget(combo);
        addChoice(box);
    }
}

void RegisterPageView::addChoice(QWidget* group) {
    const int wanted = group->sizeHint().width();
    if (lastChoices_ == nullptr || wanted > room_) {
        lastChoices_ = new QHBoxLayout;
        choiceRows_->addLayout(lastChoices_);
        room_ = choiceWidth * fontMetrics().averageCharWidth();
    }
    room_ -= wanted;
    lastChoices_->addWidget(group);
}

} // namespace bitlux::gui
