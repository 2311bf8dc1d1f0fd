#include "gui/panels/panel_status_view.h"

#include "gui/desktop/theme.h"
#include "gui/panels/group_flow.h"
#include "gui/panels/last_word.h"
#include "gui/panels/sheet_view.h"
#include "platform/forms/form_set.h"

#include <QVBoxLayout>

namespace bitlux::gui {

namespace {

/// Widgets beside each other, wrapped into further lines if necessary.
GroupFlow& flowIn(QWidget* widget) {
    auto* flow = new GroupFlow(GroupFlow::Spare::Left);
    flow->setContentsMargins(0, 0, 0, 0);
    widget->setLayout(flow);
    return *flow;
}

} // namespace

PanelStatusView::PanelStatusView(PanelForm& form, const PanelExtras& extras,
                                 const PanelWidgets& widgets, QWidget* parent)
    : QWidget(parent), form_(form), widgets_(widgets) {
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(4);
    if (form.chip().variants.exists() || !extras.variants.empty())
        layout->addWidget(makeVariants(extras));
    const bool isAlone = !hasViewsBesidePages(form.chip());
    if (isAlone && form.chip().word.status.width() > 0)
        layout->addLayout(makeStatus());
    layout->addWidget(makeTexts());
    if (form.chip().word.packed)
        layout->addWidget(makeOrderNote());
    const Actions actions = actionsOn(form.chip(), std::string(chips::statusPage));
    if (isAlone && (!actions.empty() || !extras.reads.empty()))
        layout->addWidget(makeReads(actions, extras));
}

QLayout* PanelStatusView::makeStatus() {
    constexpr int lineBits = 16;
    const chips::Row& status = form_.chip().word.status;
    auto* row = new QHBoxLayout;
    auto* bits =
        new BitRow(form_.pageControls.row(status.first), BitRow::Use::Shown, widgets_.binder, this);
    if (status.width() > lineBits && status.width() % lineBits == 0) {
        auto* captions = new QVBoxLayout;
        for (int first = status.width() - lineBits; first >= 0; first -= lineBits)
            captions->addWidget(
                new QLabel(QString("SPI Bits %1 - %2").arg(first + lineBits - 1).arg(first), this));
        bits->setLongestLine(lineBits);
        row->addLayout(captions);
    }
    row->addWidget(bits, 1);
    return row;
}

QWidget* PanelStatusView::makeVariants(const PanelExtras& extras) {
    const chips::Variants& variants = form_.chip().variants;
    auto* widget = new QWidget(this);
    GroupFlow& flow = flowIn(widget);
    auto* group = new QWidget(widget);
    if (extras.variantFrame != nullptr)
        widgets_.binder.bind(*extras.variantFrame, *group);
    auto* options = new GroupFlow(GroupFlow::Spare::Left);
    options->setContentsMargins(0, 0, 0, 0);
    group->setLayout(options);
    for (int i = 0; i < static_cast<int>(variants.titles.size()); ++i)
        options->addWidget(widgets_.make<QRadioButton, forms::OptionButton>(
            ControlRef(variants.options) + i, group));
    flow.addWidget(group);
    for (const MakeWidget& make : extras.variants)
        flow.addWidget(make(widget));
    return widget;
}

void PanelStatusView::addWord(const chips::Sheet::Row& shown, QHBoxLayout& row, QWidget* parent) {
    constexpr int letters = 24;
    if (!shown.caption.empty())
        row.addWidget(new QLabel(textOf(shown.caption), parent));
    for (const chips::ControlRange& range : shown.controls)
        for (forms::Control* control : controlsIn(range, form_)) {
            auto* text =
                widgets_.binder.make<QLabel>(dynamic_cast<forms::Label&>(*control), parent);
            text->setFont(fixedFont());
            text->setMinimumWidth(text->fontMetrics().averageCharWidth() * letters);
            text->setTextInteractionFlags(Qt::TextSelectableByMouse);
            row.addWidget(text);
        }
}

QWidget* PanelStatusView::makeTexts() {
    auto* widget = new QWidget(this);
    auto* row = new QHBoxLayout(widget);
    row->setContentsMargins(0, 0, 0, 0);
    row->setSpacing(16);
    for (const chips::Sheet::Row& label : form_.chip().panel.lastWord)
        addWord(label, *row, widget);
    if (form_.chip().panel.lastWord.empty())
        row->addWidget(new LastWord(form_.words, widget));
    row->addStretch();
    for (const chips::ControlRange& range : form_.chip().panel.texts)
        for (forms::Control* control : controlsIn(range, form_))
            row->addWidget(
                widgets_.binder.make<QLabel>(dynamic_cast<forms::Label&>(*control), widget));
    return widget;
}

QWidget* PanelStatusView::makeOrderNote() {
    auto* note = new QLabel("Words go out least significant bit first; this chip needs the most "
                            "significant bit first. Nothing is sent until the configuration has "
                            "that.",
                            this);
    note->setWordWrap(true);
    const auto follow = [this, note] { note->setVisible(!form_.words.hasOrder()); };
    follow();
    flushed_ = widgets_.binder.flushed.follow(follow);
    formGoing_ = form_.set().formGoing.follow([this](forms::Form& going) {
        if (&going == &form_)
            flushed_ = {};
    });
    return note;
}

QWidget* PanelStatusView::makeReads(const Actions& actions, const PanelExtras& extras) {
    auto* widget = new QWidget(this);
    GroupFlow& flow = flowIn(widget);
    for (const std::string& group : groupsOf(actions))
        flow.addWidget(makeGroup(group, actions, widget));
    for (const MakeWidget& make : extras.reads)
        flow.addWidget(make(widget));
    return widget;
}

QWidget* PanelStatusView::makeGroup(const std::string& group, const Actions& actions,
                                    QWidget* parent) {
    auto* widget = new QWidget(parent);
    auto* row = new QHBoxLayout(widget);
    row->setContentsMargins(0, 0, 10, 0);
    if (!group.empty())
        row->addWidget(new QLabel(textOf(group) + ":", widget));
    for (const Action& action : actions) {
        if (*action.group != group)
            continue;
        for (const chips::ControlName* button : {action.button, action.append})
            if (button->exists())
                row->addWidget(widgets_.rowButton(*button, widget, textOf(group)));
    }
    return widget;
}

} // namespace bitlux::gui
