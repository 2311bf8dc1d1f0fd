#include "panels/zt72518/refresh_mode.h"

#include "panels/common/described_register.h"

namespace bitlux::zt72518 {

RefreshMode::RefreshMode(const PanelContext& context) {
    PanelControls& controls = context.controls;
    const chips::Field& shown = describedRegister(context.chip, "Init Wdog").fields.front();
    controls.addFrame(frame, "WD Refresh Mode (See Only. for Change =>see Init Wd)").disable();
    PanelControls::Texts captions;
    for (const chips::Choice& choice : shown.choices)
        captions.push_back(choice.text);
    controls.addOptions(shown.mirror, captions);
    for (std::size_t i = 0; i < captions.size(); ++i)
        controls.find(ControlRef(shown.mirror) + static_cast<int>(i))->disable();
}

} // namespace bitlux::zt72518
