#include "panels/zt72518/variant_selection.h"

#include "chips/zt72518/variants.h"

#include <span>

namespace bitlux::zt72518 {

namespace chip = oldchips::zt72518;

namespace {

constexpr const char* options = "opt_vb";
constexpr int originalDongle = 0;
constexpr int dongleFor72518 = 1;
constexpr oldchips::ControlName picture{"vb_otp", 0};

} // namespace

VariantSelection::VariantSelection(forms::Form& form, PanelControls& controls,
                                   const MarkerFiles& markers)
    : form_(form),
      controls_(controls),
      markers_(markers),
      HScroll1(form, "HScroll1", 0, 100),
      VScroll1(form, "VScroll1", 0, 100) {
    const std::span captions(chip::selectionCaptions);
    controls.addFrame(picture, "");
    controls.addFrame({"vb_otp", 1}, "");
    controls.addOptions(options, 0, captions.first(chip::firstVariant));
    controls.addOptions(options, chip::firstVariant, captions.subspan(chip::firstVariant));
    // Everything is there at first.
    controls.get<forms::OptionButton>({options, dongleFor72518}).setValue(true);
    controls.get<forms::OptionButton>({options, chip::firstVariant}).setValue(true);
    for (const chip::VariantBox& box : chip::variantBoxes)
        controls.get<forms::CheckBox>({"pre_prog_box", box.box}).setValue(1);

    controls.onClick({options, originalDongle}, [this] { chooseOriginalDongle(); });
    controls.onClick({options, dongleFor72518}, [this] { chooseDongleFor72518(); });
    for (int i = 0; i < chip::variantCount; ++i)
        controls.onClick({options, chip::firstVariant + i}, [this, i] { chooseVariant(i); });
    form.procedure("TesterPresenceFichier",
                   [this](const std::string& path) { return TesterPresenceFichier(path); });
}

void VariantSelection::load() {
    const bool offered = TesterPresenceFichier(std::string("C:\\") + markerFile);
    controls_.find(picture)->setVisible(offered);
    controls_.find({options, originalDongle})->setVisible(offered);
    controls_.find({options, dongleFor72518})->setVisible(offered);
}

int VariantSelection::variant() const {
    return chip::firstVariant +
           controls_.chosen(options, chip::firstVariant, chip::variantCount).value_or(0);
}

bool VariantSelection::TesterPresenceFichier(const std::string& path) const {
    return markers_.present(path.substr(path.find_last_of("\\/") + 1));
}

void VariantSelection::chooseOriginalDongle() {
    for (const char* hidden : {"frame_Condition(0)", "frame_Condition(1)", "wd_aff(4)",
                               "wd_refresh(0)", "wd_refresh(1)"})
        form_.control(hidden).hide();
    form_.control("Val_loop(3)").disable();
}

void VariantSelection::chooseDongleFor72518() {
    // The first condition's own box shows and hides the other frame.
    for (const char* shown : {"frame_Condition(0)", "wd_aff(4)", "wd_refresh(0)", "wd_refresh(1)"})
        form_.control(shown).show();
    form_.control("Val_loop(3)").enable();
}

void VariantSelection::chooseVariant(int index) {
    const chip::VariantSet variant = 1U << index;
    for (const chip::VariantControls& row : chip::variantControls)
        enable(row.name, row.first, row.last, (row.on & variant) != 0);
    for (const chip::VariantCaption& row : chip::variantCaptions)
        controls_.get<forms::Label>(row.label).setCaption("-");
    for (const chip::VariantCaption& row : chip::variantCaptions)
        if ((row.on & variant) != 0)
            controls_.get<forms::Label>(row.label).setCaption(std::string(row.caption));
    for (const chip::VariantBox& row : chip::variantBoxes) {
        auto& box = controls_.get<forms::CheckBox>({"pre_prog_box", row.box});
        const bool on = (row.on & variant) != 0;
        box.setEnabled(on);
        box.setValue(on ? 1 : 0);
    }
}

void VariantSelection::enable(std::string_view name, int first, int last, bool on) const {
    for (forms::Control* control : form_.controls())
        if (control->name() == name &&
            (first < 0 || (control->index() >= first && control->index() <= last)))
            control->setEnabled(on);
}

} // namespace bitlux::zt72518
