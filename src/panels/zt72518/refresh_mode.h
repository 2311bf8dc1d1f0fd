#pragma once

#include "panels/common/panel_part.h"

namespace bitlux::zt72518 {

/// The page of the watchdog's refresh shows the mode that is chosen on the page of its settings; it
/// cannot be changed there.
class RefreshMode : public PanelPart {
public:
    static constexpr ControlRef frame{"wd_frame"};

    explicit RefreshMode(const PanelContext& context);
};

} // namespace bitlux::zt72518
