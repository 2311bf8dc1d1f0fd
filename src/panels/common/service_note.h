#pragma once

#include "panels/common/panel_part.h"

namespace bitlux {

/// Stands beside a watchdog that the dongle serves, and tells when it does so no more: the dongle
/// is gone, or was away and has lost what it was told. The label is the control WatchdogDongle.
class ServiceNote {
public:
    explicit ServiceNote(const PanelContext& context);

    /// The dongle was told to serve, or to stop; `answered` when it has heard that.
    void told(bool serves, bool answered);

    forms::Label WatchdogDongle;

private:
    void show();

    const DongleLink& link_;
    bool serves_ = false;            ///< as the panel shows it
    std::optional<unsigned> losses_; ///< of the link, when the dongle began to serve
    Subscription presence_;
};

} // namespace bitlux
