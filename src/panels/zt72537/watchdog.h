#pragma once

#include "panels/common/repeated_read.h"
#include "panels/common/service_note.h"

namespace bitlux::zt72537 {

/// The box that makes the dongle stop serving in low-power modes.
inline constexpr ControlRef stopsService{"wd_en", 1};

/// The chip's watchdog, which the dongle serves, its period, the automatic reads, and the boxes
/// that determine both in low-power modes.
class Watchdog : public PanelPart {
public:
    explicit Watchdog(const PanelContext& context);

    void load() override;
    void unload() override { send_wd_537(0); }

    /// Commands the dongle to serve the watchdog (1) or to stop (0).
    void send_wd_537(int state);
    void stopReads();

private:
    void addProcedures(forms::Form& form);
    void commandDongle();
    void WDConfResistor_Change();
    void stopChanges();
    void checkInterrupt();
    void tim_int_Timer();

    const PanelSurroundings& outside_;
    PanelControls& controls_;
    forms::ScrollBar& wd_time_; ///< ms
    ServiceNote note_;
    forms::Timer tim_int_;
    RepeatedRead autoRead_;
    int step_ = 0; ///< of the animation
};

} // namespace bitlux::zt72537
