#include "panels/zt72518/dongle_version.h"

namespace bitlux::zt72518 {

namespace {

constexpr ControlRef original = DongleVersion::versions;
constexpr ControlRef for72518{"opt_vb", 1};
constexpr const char* triggerLine = "Val_loop(3)";

} // namespace

DongleVersion::DongleVersion(const PanelContext& context)
    : form_(context.form),
      controls_(context.controls),
      markers_(context.outside.markers),
      HScroll1(context.form, "HScroll1", 0, 100),
      VScroll1(context.form, "VScroll1", 0, 100) {
    controls_.addFrame(versionFrame, "");
    controls_.addFrame(variantFrame, "");
    controls_.addOptions(versions, {"Original BusTether version", "BusTether version for 72518"});
    controls_.get<forms::OptionButton>(for72518).setValue(true); // initially nothing is restricted
    controls_.onClick(original, [this] { chooseOriginal(); });
    controls_.onClick(for72518, [this] { chooseFor72518(); });
    form_.procedure("TesterPresenceFichier",
                    [this](const std::string& path) { return TesterPresenceFichier(path); });
}

void DongleVersion::load() {
    const bool offered = TesterPresenceFichier(std::string("C:\\") + markerFile);
    for (const ControlRef& shown : {versionFrame, original, for72518})
        controls_.find(shown)->setVisible(offered);
}

bool DongleVersion::TesterPresenceFichier(const std::string& path) const {
    return markers_.present(path.substr(path.find_last_of("\\/") + 1));
}

void DongleVersion::chooseOriginal() const {
    for (const char* hidden : {"frame_Condition(0)", "frame_Condition(1)", "wd_aff(4)",
                               "wd_refresh(0)", "wd_refresh(1)"})
        form_.control(hidden).hide();
    form_.control(triggerLine).disable();
}

void DongleVersion::chooseFor72518() const {
    // The box of the first condition shows and hides the other frame.
    for (const char* shown : {"frame_Condition(0)", "wd_aff(4)", "wd_refresh(0)", "wd_refresh(1)"})
        form_.control(shown).show();
    form_.control(triggerLine).enable();
}

} // namespace bitlux::zt72518
