#pragma once

#include "panels/common/service_note.h"
#include "platform/forms/form_set.h"

#include <functional>

namespace bitlux::zt72516 {

/// The watchdog that the dongle serves: its mode and time, and the buttons that start and stop the
/// service. Unloading the panel stops it.
class Watchdog : public PanelPart {
public:
    explicit Watchdog(const PanelContext& context);

    void unload() override { Btn_Stop_Watchdog_Click(); }

private:
    void Btn_Start_Watchdog_Click();
    void Btn_Stop_Watchdog_Click();
    void Check_UseSpiDongleForWD_Click();
    void enable(bool on);
    void commandDongle(bool starts);

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

/// Commands the dongle to start with the values of the lists, once, if ZT72516WatchdogStart is set,
/// else to stop; `lists` makes the panel if necessary. Does nothing without a dongle. When the
/// dongle does not answer, the panel ZT72518 is hidden, if it exists. Returns whether it answered.
bool Send72516WatchdogCmd(Session& session, DongleLink& link, forms::FormSet& forms,
                          const std::function<const Watchdog&()>& lists);

} // namespace bitlux::zt72516
