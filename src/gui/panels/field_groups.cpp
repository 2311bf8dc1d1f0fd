#include "gui/panels/field_groups.h"

#include "gui/panels/choice_option.h"
#include "panels/common/field_text.h"

#include <algorithm>

#include <QGridLayout>

namespace bitlux::gui {

namespace {

using Kind = chips::Field::Kind;

constexpr const char* notChosen = "not chosen";

bool isBox(const chips::Field& field) {
    return field.kind == Kind::Box;
}

/// The visible text of a control.
QString captionOf(const PanelWidgets& widgets, const ControlRef& name) {
    const auto* control = dynamic_cast<const forms::Captioned*>(widgets.controls.find(name));
    return control == nullptr ? QString() : textOf(control->caption());
}

} // namespace

QVBoxLayout* FieldGroups::makeGroup(const QString& title, QGroupBox*& box) {
    box = new QGroupBox(title, parent_);
    auto* column = new QVBoxLayout(box);
    PanelWidgets::setLines(*column);
    return column;
}

void FieldGroups::add(const chips::Register& shown) {
    for (const chips::Field& field : shown.fields)
        if (!isBox(field))
            addField(field);
    addBoxes(shown);
}

void FieldGroups::addField(const chips::Field& field) {
    QGroupBox* box = nullptr;
    QVBoxLayout* column = makeGroup(textOf(fieldTitle(field)), box);
    if (field.frame.exists())
        widgets_.binder.bind(widgets_.controls.get<forms::Frame>(field.frame), *box);
    fill(*column, field, box);
    column->addStretch();
    flow_.addWidget(box);
}

void FieldGroups::fill(QVBoxLayout& column, const chips::Field& field, QWidget* box) {
    if (field.kind == Kind::List)
        column.addWidget(makeList(field, box));
    else if (field.kind == Kind::Box)
        column.addWidget(widgets_.make<QCheckBox, forms::CheckBox>(field.control, box));
    else
        addOptions(column, field, box);
    addNotes(column, field, box);
}

void FieldGroups::addOptions(QVBoxLayout& column, const chips::Field& field, QWidget* box) const {
    std::optional<ColumnPlaces> columns;
    if (!field.heads.empty()) {
        QStringList heads;
        for (const std::string& head : field.heads)
            heads << textOf(head);
        columns.emplace(heads, box->fontMetrics());
    }
    for (int i = 0; i < static_cast<int>(field.choices.size()); ++i) {
        auto* option =
            widgets_.make<ChoiceOption, forms::OptionButton>(ControlRef(field.control) + i, box);
        if (columns) {
            option->setColumns(*columns);
            if (i == 0)
                column.addWidget(new ColumnHeads(*columns, option->indent(), box));
        }
        column.addWidget(option);
    }
}

QComboBox* FieldGroups::makeList(const chips::Field& field, QWidget* box) const {
    constexpr int characters = 30;
    auto* list = widgets_.make<QComboBox, forms::ComboBox>(field.control, box);
    list->setPlaceholderText(notChosen);
    if (list->isEditable())
        list->lineEdit()->setPlaceholderText(notChosen);
    list->setAccessibleName(textOf(field.title).trimmed());
    list->setMinimumWidth(list->fontMetrics().averageCharWidth() * characters);
    return list;
}

void FieldGroups::addNotes(QVBoxLayout& column, const chips::Field& field, QWidget* box) const {
    if (!field.note.empty())
        column.addWidget(PanelWidgets::note(field.note, box));
    if (field.when.exists())
        column.addWidget(PanelWidgets::note(
            "Counts while \"" + captionOf(widgets_, field.when.control).toStdString() +
                "\" is chosen",
            box));
}

void FieldGroups::addBoxes(const chips::Register& shown) {
    std::vector<const chips::Field*> boxes;
    for (const chips::Field& field : shown.fields)
        if (isBox(field))
            boxes.push_back(&field);
    if (boxes.empty())
        return;
    const bool single =
        std::all_of(boxes.begin(), boxes.end(), [](const auto* f) { return f->bits.size() == 1; });
    std::stable_sort(boxes.begin(), boxes.end(), [](const auto* one, const auto* other) {
        return one->bits.highest() > other->bits.highest(); // in the order of the row above
    });
    QGroupBox* box = nullptr;
    QVBoxLayout* column = makeGroup(single ? "Single bits" : "Switches", box);
    for (const chips::Field* field : boxes)
        fill(*column, *field, box);
    column->addStretch();
    flow_.addWidget(box);
}

void FieldGroups::addWhole(const chips::Register& shown, const QString& title) {
    QGroupBox* box = nullptr;
    QVBoxLayout* column = makeGroup(title, box);
    column->setSpacing(6);
    if (!shown.note.empty())
        column->addWidget(PanelWidgets::note(shown.note, box));
    for (const chips::Field& field : shown.fields) {
        if (!isBox(field) && (shown.fields.size() > 1 || field.frame.exists())) {
            auto* part = new QGroupBox(textOf(fieldTitle(field)), box);
            if (field.frame.exists())
                widgets_.binder.bind(widgets_.controls.get<forms::Frame>(field.frame), *part);
            auto* lines = new QVBoxLayout(part);
            PanelWidgets::setLines(*lines);
            fill(*lines, field, part);
            column->addWidget(part);
        } else {
            fill(*column, field, box);
        }
    }
    column->addStretch();
    addButtons(*column, shown.writeButton, shown.writeLine.button, textOf(shown.title), box);
    flow_.addWidget(box);
}

void FieldGroups::addButtons(QVBoxLayout& column, const ControlRef& first, const ControlRef& second,
                             const QString& about, QWidget* box) {
    auto* line = new QHBoxLayout;
    line->setSpacing(4);
    for (const ControlRef& name : {first, second})
        if (!name.name.empty())
            line->addWidget(widgets_.rowButton(name, box, about));
    line->addStretch();
    column.addLayout(line);
}

void FieldGroups::add(const Actions& actions) {
    for (const std::string& group : groupsOf(actions))
        addActions(group, actions);
}

void FieldGroups::addActions(const std::string& group, const Actions& actions) {
    QGroupBox* box = nullptr;
    QVBoxLayout* column = makeGroup(group.empty() ? QString("Commands") : textOf(group), box);
    auto* grid = new QGridLayout;
    grid->setSpacing(4);
    constexpr int places = 2; // beside each other, without the rest
    grid->setColumnStretch(places, 1);
    column->addLayout(grid);
    for (const Action& action : actions) {
        if (*action.group != group)
            continue;
        const QString about = textOf(group.empty() ? *action.title : group);
        const int line = grid->rowCount();
        int place = 0;
        for (const chips::ControlName* button : {action.button, action.append})
            if (button->exists())
                grid->addWidget(widgets_.rowButton(*button, box, about), line, place++);
        if (!action.note.empty())
            grid->addWidget(PanelWidgets::note(action.note, box), line + 1, 0, 1, places + 1);
    }
    column->addStretch();
    flow_.addWidget(box);
}

} // namespace bitlux::gui
