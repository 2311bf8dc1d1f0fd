#include "panels/common/variant_rules.h"

#include <algorithm>

namespace bitlux {

namespace {

bool names(const std::vector<std::string>& variants, const std::string& variant) {
    return std::find(variants.begin(), variants.end(), variant) != variants.end();
}

bool covers(const chips::ControlRange& row, const forms::Control& control) {
    return control.name() == row.name &&
           (row.first < 0 || (control.index() >= row.first && control.index() <= row.last));
}

} // namespace

VariantRules::VariantRules(const chips::Chip& chip, forms::Form& form, PanelControls& controls)
    : variants_(chip.variants), form_(form), controls_(controls) {
    if (!variants_.exists())
        return;
    controls.addOptions(variants_.options, variants_.titles);
    controls.get<forms::OptionButton>(ControlRef(variants_.options) + variants_.selected)
        .setValue(true);
    for (std::size_t i = 0; i < variants_.titles.size(); ++i)
        controls.onClick(ControlRef(variants_.options) + static_cast<int>(i),
                         [this, i] { choose(variants_.titles[i]); });
}

void VariantRules::start() const {
    for (const chips::Variants::Rule& rule : variants_.rules)
        if (rule.effect == chips::Variants::Effect::Ticked)
            apply(rule, true);
    if (variants_.selected > 0)
        choose(chosen());
}

std::string VariantRules::chosen() const {
    if (!variants_.exists())
        return {};
    const int count = static_cast<int>(variants_.titles.size());
    return variants_.titles.at(
        static_cast<std::size_t>(controls_.chosen(variants_.options, count).value_or(0)));
}

void VariantRules::choose(const std::string& variant) const {
    for (const chips::Variants::Rule& rule : variants_.rules)
        apply(rule, names(rule.on, variant));
    for (const chips::Variants::Caption& row : variants_.captions)
        controls_.get<forms::Label>(row.label).setCaption(variants_.otherwise);
    for (const chips::Variants::Caption& row : variants_.captions)
        if (names(row.on, variant))
            controls_.get<forms::Label>(row.label).setCaption(row.text);
}

void VariantRules::apply(const chips::Variants::Rule& rule, bool on) const {
    for (forms::Control* control : form_.controls())
        for (const chips::ControlRange& row : rule.controls)
            if (covers(row, *control))
                applyTo(*control, rule.effect, on);
}

void VariantRules::applyTo(forms::Control& control, chips::Variants::Effect effect, bool on) {
    if (effect == chips::Variants::Effect::Visible) {
        control.setVisible(on);
        return;
    }
    control.setEnabled(on);
    auto* box = dynamic_cast<forms::CheckBox*>(&control);
    if (effect == chips::Variants::Effect::Ticked && box != nullptr)
        box->setValue(on ? 1 : 0);
}

} // namespace bitlux
