#pragma once

#include "panels/common/panel_part.h"

namespace bitlux {

/// A note beside a watchdog that the dongle serves, visible when it no longer does: the dongle is
/// gone, or was unplugged and has lost its command. The label is the control WatchdogDongle.
class ServiceNote {
public:
    explicit ServiceNote(const PanelContext& context);

    /// The dongle was commanded to serve, or to stop; `answered`: whether it confirmed that.
    void commanded(bool serves, bool answered);

    forms::Label WatchdogDongle;

private:
    void show();

    const DongleLink& link_;
    bool serves_ = false;            ///< as shown by the panel
    std::optional<unsigned> losses_; ///< of the link, when the dongle began to serve
    Subscription presence_;
};

} // namespace bitlux
