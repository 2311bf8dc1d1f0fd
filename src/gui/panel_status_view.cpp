#include "gui/panel_status_view.h"

#include "chips/zt72518/diagram.h"
#include "chips/zt72518/variants.h"
#include "gui/theme.h"

#include <QVBoxLayout>

namespace bitlux::gui {

namespace chip = oldchips::zt72518;

PanelStatusView::PanelStatusView(zt72518::PanelForm& form, const PanelWidgets& widgets,
                                 QWidget* parent)
    : QWidget(parent), form_(form), widgets_(widgets) {
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(4);
    layout->addWidget(makeVariants());
    std::vector<forms::Label*> bits;
    for (const auto& bit : form_.link.Reg_W)
        bits.push_back(bit.get());
    layout->addWidget(new BitRow(bits, BitRow::Use::Shown, widgets_.binder, this));
    layout->addWidget(makeTexts());
    layout->addWidget(makeReads());
}

QWidget* PanelStatusView::makeVariants() {
    auto* widget = new QWidget(this);
    auto* row = new QHBoxLayout(widget);
    row->setContentsMargins(0, 0, 0, 0);
    row->setSpacing(16);
    const std::array<std::pair<int, int>, 2> groups{
        {{chip::firstVariant, chip::firstVariant + chip::variantCount}, {0, chip::firstVariant}}};
    for (int frame = 1; const auto& [first, end] : groups) {
        auto* group = new QWidget(widget);
        widgets_.binder.bind(widgets_.controls.get<forms::Frame>({"vb_otp", frame--}), *group);
        auto* options = new QHBoxLayout(group);
        options->setContentsMargins(0, 0, 0, 0);
        for (int i = first; i < end; ++i)
            options->addWidget(
                widgets_.make<QRadioButton, forms::OptionButton>({"opt_vb", i}, group));
        row->addWidget(group);
    }
    row->addStretch();
    return widget;
}

QWidget* PanelStatusView::makeTexts() {
    auto* widget = new QWidget(this);
    auto* row = new QHBoxLayout(widget);
    row->setContentsMargins(0, 0, 0, 0);
    row->setSpacing(16);
    constexpr int sent = 0;
    constexpr int received = 7;
    for (const int label : {sent, received}) {
        auto* text = widgets_.make<QLabel, forms::Label>({"Label_Liste", label}, widget);
        text->setFont(fixedFont());
        text->setMinimumWidth(text->fontMetrics().averageCharWidth() * 19);
        text->setTextInteractionFlags(Qt::TextSelectableByMouse);
        row->addWidget(text);
    }
    row->addStretch();
    for (int label = chip::firstModeLabel; label <= chip::identityLabel; ++label)
        row->addWidget(widgets_.make<QLabel, forms::Label>({"Mode_Rm_Rh", label}, widget));
    return widget;
}

QWidget* PanelStatusView::makeReads() {
    auto* widget = new QWidget(this);
    auto* row = new QHBoxLayout(widget);
    row->setContentsMargins(0, 0, 0, 0);
    const auto add = [&](const char* title, std::initializer_list<oldchips::ControlName> names) {
        row->addWidget(new QLabel(QString(title) + ":", widget));
        for (const oldchips::ControlName& name : names)
            row->addWidget(widgets_.rowButton(name, widget, title));
        row->addSpacing(12);
    };
    add("Registers", {{"Cm_ReadAll_Rl", 0}, {"Cm_ReadAll_Rl", 2}});
    add("High views", {{"Cm_ReadAll_Rh"}, {"Seq_All_Rh"}});
    add("Flags", {{"Cm_ReadAll_RFl"}, {"Seq_All_RFl"}, {"Cm_ReadAll_Rl", 1}});
    row->addStretch();
    constexpr int autoReading = 34;
    constexpr int storing = 39;
    for (const int box : {autoReading, storing})
        row->addWidget(
            widgets_.binder.make<QCheckBox>(form_.sequencer.autoReads.read_auto(box), widget));
    return widget;
}

} // namespace bitlux::gui
