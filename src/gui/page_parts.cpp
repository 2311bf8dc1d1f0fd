#include "gui/page_parts.h"

#include "chips/zt72518/diagram.h"

namespace bitlux::gui {

namespace chip = oldchips::zt72518;

namespace {

PageParts ramParts(zt72518::PanelForm& form, const PanelWidgets& widgets) {
    const auto entry = [&form, &widgets](QWidget* parent) {
        auto* text = widgets.binder.make<QLineEdit>(form.ram.Val_Hex_RAM, parent);
        text->setAccessibleName("Byte in hexadecimal");
        text->setPlaceholderText("hex");
        text->setMaximumWidth(text->fontMetrics().horizontalAdvance(rowButtonRoom) + 14);
        return text;
    };
    return {.entry = entry, .besideWrite = {"Cm_OK_val_hexa"}, .buttons = {{"Cm_RAM_Rl_All"}}};
}

PageParts specialModeParts(const PanelWidgets& widgets) {
    std::vector<forms::Label*> inverse;
    for (int bit = 0; bit < chip::specialRandomBits; ++bit)
        inverse.push_back(&widgets.controls.get<forms::Label>({"Spe_Mode_Rl_b", bit}));
    return {.besideWrite = {"Seq_Spe_Mode_W"},
            .bits = inverse,
            .readBits = {"Cm_Spe_Mode_Rl_b"},
            .buttons = {{"Cm_Spe_Mode_W", 1}, {"Cm_Spe_Mode_W", 2}}};
}

PageParts refreshParts(const PanelWidgets& widgets) {
    const auto group = [&widgets](QWidget* parent) {
        auto* box = widgets.make<QGroupBox, forms::Frame>({"wd_frame"}, parent);
        auto* column = new QVBoxLayout(box);
        setLines(*column);
        const oldchips::OptionField& shown = chip::registers[chip::initWdog].options.front();
        for (int value = 0; value < static_cast<int>(shown.captions.size()); ++value)
            column->addWidget(widgets.make<QRadioButton, forms::OptionButton>(
                {shown.mirror.name, shown.mirror.index + value}, box));
        return box;
    };
    return {.group = group};
}

PageParts modeParts(const PanelWidgets& widgets) {
    const auto group = [&widgets](QWidget* parent) {
        auto* box = new QGroupBox("Low power", parent);
        auto* column = new QVBoxLayout(box);
        setLines(*column);
        for (int i = 0; i < static_cast<int>(chip::lowPowerModes.size()); ++i)
            column->addWidget(widgets.make<QRadioButton, forms::OptionButton>({"s_mode", i}, box));
        for (int i = 0; i < static_cast<int>(chip::lowPowerBoxes.size()); ++i)
            column->addWidget(widgets.make<QCheckBox, forms::CheckBox>({"opt_s_mode", i}, box));
        return box;
    };
    return {.buttons = {{"Cm_Mode_RM_W", 1}, {"Cm_Mode_RM_W", 2}}, .group = group};
}

} // namespace

PageParts pageParts(const chip::Page& page, zt72518::PanelForm& form, const PanelWidgets& widgets) {
    switch (page.firstRegister) {
    case chip::ramA:
        return ramParts(form, widgets);
    case chip::specialMode:
        return specialModeParts(widgets);
    case chip::watchdogRefresh:
        return refreshParts(widgets);
    case chip::modeRandom:
        return modeParts(widgets);
    default:
        return {};
    }
}

} // namespace bitlux::gui
