#pragma once

#include "panels/common/service_note.h"

namespace bitlux::zt72361 {

/// The chip's watchdog, which the dongle serves with the word of timer 1.
class Watchdog : public PanelPart {
public:
    explicit Watchdog(const PanelContext& context);

    [[nodiscard]] bool isOn() const;
    /// Chooses ON or OFF like a user.
    void choose(bool wanted);
    void start();

    /// Commands the dongle to serve the watchdog (1) or to stop (0).
    void send_wd_361(int state);

private:
    void OptWdEn_Click(bool starts);

    const PanelSurroundings& outside_;
    const chips::Register& timer_;
    const RegisterPages& pages_;
    PanelControls& controls_;
    const forms::ScrollBar& period_; ///< in steps of 2 ms
    ServiceNote note_;
};

} // namespace bitlux::zt72361
