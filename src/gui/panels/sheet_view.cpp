#include "gui/panels/sheet_view.h"

#include "gui/panels/auto_reads_view.h"
#include "gui/panels/sheet.h"

#include <algorithm>

#include <QGridLayout>
#include <QGroupBox>
#include <QSlider>

namespace bitlux::gui {

namespace {

using forms::Control;

constexpr int sheetSpacing = 8;

bool isLabel(const Control& control) {
    return control.kind() == Control::Kind::Label;
}

bool isButton(const Control* control) {
    return control->kind() == Control::Kind::Button;
}

bool isWide(const Control& control) {
    return control.kind() == Control::Kind::ComboBox || control.kind() == Control::Kind::ScrollBar;
}

/// Whether the button appends a line; such a button keeps its width.
bool appends(const Control& control) {
    const auto* button = dynamic_cast<const forms::Button*>(&control);
    return button != nullptr && button->caption().starts_with('>');
}

QString questionOf(const std::vector<const chips::Sheet::Confirmation*>& questions,
                   forms::Form& form) {
    for (const chips::Sheet::Confirmation* any : questions)
        if (!any->selected.exists() ||
            dynamic_cast<forms::OptionButton&>(form.control(chips::text(any->selected))).value())
            return textOf(any->text);
    return "Press again";
}

class GroupMaker {
public:
    GroupMaker(const chips::Sheet& sheet, const chips::Sheet::Group& group, forms::Form& form,
               Binder& binder, QWidget* parent)
        : sheet_(sheet),
          form_(form),
          binder_(binder),
          box_(group.title.empty() && !group.frame.exists()
                   ? new QWidget(parent)
                   : new QGroupBox(textOf(group.title), parent)),
          grid_(new QGridLayout(box_)) {
        grid_->setVerticalSpacing(4);
        grid_->setHorizontalSpacing(sheetSpacing);
        grid_->setColumnStretch(1, 1);
        if (auto* titled = qobject_cast<QGroupBox*>(box_); titled == nullptr)
            grid_->setContentsMargins(0, 0, 0, 0);
        else if (group.frame.exists())
            binder.bind(dynamic_cast<forms::Frame&>(form.control(chips::text(group.frame))),
                        *titled);
        for (const chips::Sheet::Row& row : group.rows)
            addRow(row);
        if (group.state.exists())
            addState(group.state);
        grid_->setRowStretch(grid_->rowCount(), 1);
    }

    [[nodiscard]] QWidget* box() const { return box_; }

private:
    void addRow(const chips::Sheet::Row& row) {
        std::vector<Control*> controls;
        for (const chips::ControlRange& range : row.controls)
            for (Control* control : controlsIn(range, form_))
                controls.push_back(control);
        const int line = grid_->rowCount();
        QWidget* caption = captionOf(row, controls);
        if (caption != nullptr)
            grid_->addWidget(caption, line, 0);
        auto* place = new QHBoxLayout;
        place->setSpacing(sheetSpacing);
        grid_->addLayout(place, line, caption != nullptr ? 1 : 0, 1, caption != nullptr ? 1 : 2);
        const auto* label = qobject_cast<QLabel*>(caption);
        if (label != nullptr && !label->text().trimmed().isEmpty())
            name_ = label->text();
        addControls(*place, controls);
    }

    /// What precedes a row: its caption, a label, or the button that a label explains; null if
    /// nothing does.
    QWidget* captionOf(const chips::Sheet::Row& row, std::vector<Control*>& controls) {
        if (!row.caption.empty())
            return new QLabel(textOf(row.caption), box_);
        const bool leads = controls.size() > 1 && isLabel(*controls.front());
        const bool isExplained = controls.size() == 2 && isLabel(*controls.back());
        if (!leads && !isExplained)
            return nullptr;
        QWidget* first = widgetOf(*controls.front());
        controls.erase(controls.begin());
        return first;
    }

    void addControls(QHBoxLayout& place, const std::vector<Control*>& controls) {
        const bool allPress = std::all_of(controls.begin(), controls.end(), isButton);
        bool fills = false;
        for (Control* control : controls) {
            QWidget* widget = widgetOf(*control);
            const bool grows = isWide(*control) || (allPress && !appends(*control));
            place.addWidget(widget, grows ? 1 : 0);
            fills = fills || grows;
        }
        if (!fills)
            place.addStretch();
    }

    QWidget* widgetOf(Control& control) {
        switch (control.kind()) {
        case Control::Kind::Button:
            return button(dynamic_cast<forms::Button&>(control));
        case Control::Kind::CheckBox:
            return binder_.make<QCheckBox>(dynamic_cast<forms::CheckBox&>(control), box_);
        case Control::Kind::ComboBox:
            return list(dynamic_cast<forms::ComboBox&>(control));
        case Control::Kind::OptionButton:
            return binder_.make<QRadioButton>(dynamic_cast<forms::OptionButton&>(control), box_);
        case Control::Kind::ScrollBar:
            return bar(dynamic_cast<forms::ScrollBar&>(control));
        case Control::Kind::TextBox:
            return entry(dynamic_cast<forms::TextBox&>(control));
        case Control::Kind::Label:
            return label(dynamic_cast<forms::Label&>(control));
        default:
            throw forms::UnknownName(control.fullName(), {});
        }
    }

    QWidget* button(forms::Button& control) {
        QPushButton* made = confirmed(control);
        if (made == nullptr)
            made = PanelWidgets::button(binder_, control, box_);
        if (made->text().startsWith('>'))
            made->setAccessibleName(made->text() + " " + name_);
        else
            name_ = made->text().simplified();
        return made;
    }

    /// Null for a button that acts at once.
    QPushButton* confirmed(forms::Button& control) {
        std::vector<const chips::Sheet::Confirmation*> questions;
        for (const chips::Sheet::Confirmation& any : sheet_.confirmations)
            if (&form_.control(chips::text(any.button)) == &control)
                questions.push_back(&any);
        if (questions.empty())
            return nullptr;
        auto* made = new ConfirmButton(
            [&form = form_, questions] { return questionOf(questions, form); }, box_);
        binder_.bind(control, *made);
        return made;
    }

    /// A label without a text is a lamp.
    QWidget* label(forms::Label& control) {
        auto* made = binder_.make<QLabel>(control, box_);
        if (control.caption().empty())
            made->setMinimumWidth(made->fontMetrics().height());
        return made;
    }

    QWidget* list(forms::ComboBox& control) {
        auto* made = binder_.make<QComboBox>(control, box_);
        made->setPlaceholderText(control.text().empty() ? "Choose" : textOf(control.text()));
        made->setAccessibleName(name_.isEmpty() ? made->placeholderText() : name_);
        return made;
    }

    QWidget* bar(forms::ScrollBar& control) {
        auto* made = new QSlider(Qt::Horizontal, box_);
        binder_.bind(control, *made);
        made->setAccessibleName(name_);
        return made;
    }

    QWidget* entry(forms::TextBox& control) {
        auto* made = binder_.make<QLineEdit>(control, box_);
        made->setAccessibleName(name_);
        return made;
    }

    void addState(const chips::ControlName& name) {
        auto* label = binder_.make<QLabel>(
            dynamic_cast<forms::Label&>(form_.control(chips::text(name))), box_);
        label->setAlignment(Qt::AlignCenter);
        label->setMargin(4);
        grid_->addWidget(label, grid_->rowCount(), 0, 1, 2);
    }

    const chips::Sheet& sheet_;
    forms::Form& form_;
    Binder& binder_;
    QWidget* box_;
    QGridLayout* grid_;
    QString name_; ///< the name for the next control
};

QWidget* makePage(const chips::Sheet& sheet, PanelForm& form, Binder& binder, QWidget* parent) {
    auto* scrolled = new Sheet(parent);
    auto* column = new QVBoxLayout(scrolled->widget());
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(10);
    column->addWidget(makeSheet(sheet, form, binder, scrolled->widget()));
    auto* reads = form.findPart<AutoReads>();
    if (sheet.hasReads && reads != nullptr)
        column->addWidget(makeAutoReads(*reads, binder, scrolled->widget()));
    column->addStretch();
    return scrolled;
}

} // namespace

std::vector<Control*> controlsIn(const chips::ControlRange& range, forms::Form& form) {
    if (range.first < 0)
        return {&form.control(range.name)};
    std::vector<Control*> controls;
    for (int i = range.first; i <= range.last; ++i)
        controls.push_back(&form.control(chips::text({range.name, i})));
    return controls;
}

QWidget* makeSheet(const chips::Sheet& sheet, forms::Form& form, Binder& binder, QWidget* parent) {
    auto* widget = new QWidget(parent);
    auto* row = new QHBoxLayout(widget);
    row->setContentsMargins(0, 0, 0, 0);
    std::vector<QVBoxLayout*> columns;
    for (const chips::Sheet::Group& group : sheet.groups) {
        while (static_cast<int>(columns.size()) <= group.column) {
            columns.push_back(new QVBoxLayout);
            row->addLayout(columns.back(), 1);
        }
        columns[static_cast<std::size_t>(group.column)]->addWidget(
            GroupMaker(sheet, group, form, binder, widget).box());
    }
    if (sheet.groups.size() > columns.size())
        for (QVBoxLayout* column : columns)
            column->addStretch();
    return widget;
}

namespace {

MakeWidget makerOf(const chips::Sheet& sheet, const chips::Sheet::Group& group, PanelForm& form,
                   const PanelWidgets& widgets) {
    return [&sheet, &group, &form, widgets](QWidget* parent) {
        return GroupMaker(sheet, group, form, widgets.binder, parent).box();
    };
}

/// What a sheet adds beside the rows of a page of registers, and after its fields.
void addToPage(const chips::Sheet& sheet, PanelForm& form, const PanelWidgets& widgets,
               PageExtras& page) {
    if (sheet.stacked)
        page.groups.emplace_back([&sheet, &form, widgets](QWidget* parent) {
            return makeSheet(sheet, form, widgets.binder, parent);
        });
    else
        for (const chips::Sheet::Group& group : sheet.groups)
            page.groups.push_back(makerOf(sheet, group, form, widgets));
    if (sheet.entry.exists())
        page.entry = [&sheet, &form, widgets](QWidget* parent) {
            auto& box = dynamic_cast<forms::TextBox&>(form.control(chips::text(sheet.entry)));
            QLineEdit* text = widgets.entry(box, "hex", "Value in hexadecimal", parent);
            text->setMaximumWidth(text->fontMetrics().horizontalAdvance(rowButtonRoom) + 14);
            return text;
        };
    page.besideWrite = sheet.besideWrite;
    PageExtras::Row row{.button = sheet.bitsButton, .bits = {}};
    for (const chips::ControlRange& range : sheet.bits)
        for (Control* control : controlsIn(range, form))
            row.bits.push_back(dynamic_cast<forms::Label*>(control));
    if (!row.bits.empty())
        page.rows.push_back(std::move(row));
    page.buttons = sheet.buttons;
}

} // namespace

void addSheetExtras(PanelForm& form, const PanelWidgets& widgets, PanelExtras& extras) {
    const std::vector<std::string> registers = form.chip().registerPages();
    for (const chips::ControlRange& range : form.chip().panel.copies)
        for (const Control* copy : controlsIn(range, form))
            extras.copies.push_back(copy);
    for (const chips::Sheet& sheet : form.chip().sheets)
        if (std::find(registers.begin(), registers.end(), sheet.page) != registers.end())
            addToPage(sheet, form, widgets, extras.registerPages[sheet.page]);
        else if (sheet.page == chips::statusPage)
            for (const chips::Sheet::Group& group : sheet.groups)
                extras.reads.push_back(makerOf(sheet, group, form, widgets));
        else if (sheet.form.empty())
            extras.pages[sheet.page] = [&sheet, &form, widgets](QWidget* parent) {
                return makePage(sheet, form, widgets.binder, parent);
            };
}

SheetView::SheetView(forms::Form& form, const chips::Sheet& sheet, Binder& binder, QWidget* parent)
    : FormDialog(
          form, [&form] { form.setVisible(false); }, binder, parent) {
    auto* layout = new QVBoxLayout(this);
    layout->addWidget(makeSheet(sheet, form, binder, this));
}

} // namespace bitlux::gui
