#pragma once

#include "panels/common/panel_controls.h"
#include "panels/zt72518/chip_link.h"
#include "panels/zt72518/command_store.h"
#include "panels/zt72518/panel_variables.h"
#include "platform/event.h"
#include "platform/forms/control_array.h"
#include "platform/forms/controls.h"
#include "platform/forms/form.h"
#include "platform/forms/timer.h"
#include "session/session.h"
#include "transfer/dongle_link.h"

namespace bitlux::zt72518 {

/// Reads the registers whose boxes are ticked twice a second, as their read buttons do. Among the
/// boxes are also those that switch all of it, those that tick a group, and those that record what
/// is sent.
class AutoReads {
public:
    /// What it works with; all outlive it.
    struct Parts {
        const PanelVariables& variables;
        const PanelControls& controls;
        const ChipLink& link;
        DongleLink& dongle;
        CommandStore& store;
    };

    AutoReads(forms::Form& form, const Parts& parts);

    void timer_auto_Timer();

private:
    void read_auto_Click(int box);
    void switchAll(int box);
    void tick(int first, int last, bool on);
    void tickGroup(int box);
    void record(bool on);
    void showRecording();
    void switchOff();
    /// After this nothing reads by itself any more.
    void giveUp();

    Parts parts_;
    Subscription linkFailed_;
    bool adjusting_ = false; ///< boxes change by themselves

public:
    forms::ControlArray<forms::CheckBox> read_auto;
    forms::Timer timer_auto;
};

} // namespace bitlux::zt72518
