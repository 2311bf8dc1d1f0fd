#include "gui/zt72518/extras.h"
#include "panels/common/described_register.h"
#include "panels/zt72518/mode_page.h"
#include "panels/zt72518/mode_words.h"
#include "panels/zt72518/ram_page.h"
#include "panels/zt72518/refresh_mode.h"
#include "panels/zt72518/special_mode_page.h"

namespace bitlux::gui {

namespace {

QWidget* makeLowPower(const PanelWidgets& widgets, QWidget* parent) {
    auto* box = new QGroupBox("Low power", parent);
    auto* column = new QVBoxLayout(box);
    PanelWidgets::setLines(*column);
    for (int i = 0; i < static_cast<int>(zt72518::lowPowerModes.size()); ++i)
        column->addWidget(widgets.make<QRadioButton, forms::OptionButton>({"s_mode", i}, box));
    for (int i = 0; i < static_cast<int>(zt72518::lowPowerBoxes.size()); ++i)
        column->addWidget(widgets.make<QCheckBox, forms::CheckBox>({"opt_s_mode", i}, box));
    return box;
}

QWidget* makeRefreshMode(const PanelWidgets& widgets, const chips::Field& shown, QWidget* parent) {
    auto* box = widgets.make<QGroupBox, forms::Frame>(zt72518::RefreshMode::frame, parent);
    auto* column = new QVBoxLayout(box);
    PanelWidgets::setLines(*column);
    for (int i = 0; i < static_cast<int>(shown.choices.size()); ++i)
        column->addWidget(
            widgets.make<QRadioButton, forms::OptionButton>(ControlRef(shown.mirror) + i, box));
    return box;
}

} // namespace

void addRamExtras(PanelForm& form, const PanelWidgets& widgets, PanelExtras& extras) {
    auto* part = form.findPart<zt72518::RamPage>();
    if (part == nullptr)
        return;
    PageExtras& page = extras.registerPages["RAM"];
    page.entry = [part, widgets](QWidget* parent) {
        auto* text = widgets.entry(part->Val_Hex_RAM, "hex", "Byte in hexadecimal", parent);
        text->setMaximumWidth(text->fontMetrics().horizontalAdvance(rowButtonRoom) + 14);
        return text;
    };
    page.besideWrite = {.name = "Cm_OK_val_hexa"};
    page.buttons = {{.name = "Cm_RAM_Rl_All"}};
}

void addSpecialModeExtras(PanelForm& form, const PanelWidgets& widgets, PanelExtras& extras) {
    using Part = zt72518::SpecialModePage;
    if (form.findPart<Part>() == nullptr)
        return;
    std::vector<forms::Label*> inverse;
    for (int bit = 0; bit < Part::randomBits; ++bit)
        inverse.push_back(&widgets.controls.get<forms::Label>({"Spe_Mode_Rl_b", bit}));
    PageExtras& page = extras.registerPages[Part::registerTitle];
    page.besideWrite = {.name = "Seq_Spe_Mode_W"};
    page.rows.push_back({.button = {.name = "Cm_Spe_Mode_Rl_b"}, .bits = std::move(inverse)});
    page.buttons = {{.name = "Cm_Spe_Mode_W", .index = 1}, {.name = "Cm_Spe_Mode_W", .index = 2}};
}

void addRefreshModeExtras(PanelForm& form, const PanelWidgets& widgets, PanelExtras& extras) {
    if (form.findPart<zt72518::RefreshMode>() == nullptr)
        return;
    const chips::Field& shown = describedRegister(form.chip(), "Init Wdog").fields.front();
    extras.registerPages["Watchdog Refresh"].groups.push_back(
        [widgets, &shown](QWidget* parent) { return makeRefreshMode(widgets, shown, parent); });
}

void addModeExtras(PanelForm& form, const PanelWidgets& widgets, PanelExtras& extras) {
    if (form.findPart<zt72518::ModePage>() == nullptr)
        return;
    PageExtras& page = extras.registerPages["Mode"];
    page.buttons = {{.name = "Cm_Mode_RM_W", .index = 1}, {.name = "Cm_Mode_RM_W", .index = 2}};
    page.groups.push_back([widgets](QWidget* parent) { return makeLowPower(widgets, parent); });
    for (int label = zt72518::firstModeLabel; label <= zt72518::identityLabel; ++label)
        extras.texts.push_back([widgets, label](QWidget* parent) {
            return widgets.make<QLabel, forms::Label>({"Mode_Rm_Rh", label}, parent);
        });
}

} // namespace bitlux::gui
