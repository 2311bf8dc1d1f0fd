#pragma once

#include "panels/common/service_note.h"
#include "platform/forms/form_set.h"

#include <functional>

namespace bitlux::zt72516 {

/// The watchdog that the dongle serves: its mode and time, and the buttons that hand it over and
/// take it back. A panel that goes takes it back.
class Watchdog : public PanelPart {
public:
    explicit Watchdog(const PanelContext& context);

    void unload() override { Btn_Stop_Watchdog_Click(); }

private:
    void Btn_Start_Watchdog_Click();
    void Btn_Stop_Watchdog_Click();
    void Check_UseSpiDongleForWD_Click();
    void enable(bool on);
    void tellDongle(bool starts);

    Session& session_;
    DongleLink& dongle_;
    MessageBoxes& boxes_;
    forms::FormSet& forms_;
    ServiceNote note_;

public:
    forms::CheckBox Check_UseSpiDongleForWD;
    forms::ComboBox Watchdog_Mode;
    forms::ComboBox Watchdog_Timing;
    forms::Button Btn_Start_Watchdog;
    forms::Button Btn_Stop_Watchdog;
    forms::Label Watchdog_Status;
};

/// Tells the dongle to start as the lists say, once, where ZT72516WatchdogStart says so, else to
/// stop; `lists` touches the panel. Does nothing without a dongle. One that does not answer takes
/// the panel ZT72518 from sight, where there is one. Whether one has answered.
bool Send72516WatchdogCmd(Session& session, DongleLink& link, forms::FormSet& forms,
                          const std::function<const Watchdog&()>& lists);

} // namespace bitlux::zt72516
