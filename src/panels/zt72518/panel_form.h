#pragma once

#include "panels/zt72518/chip_link.h"
#include "panels/zt72518/panel_variables.h"
#include "panels/zt72518/sequencer.h"
#include "platform/clock.h"
#include "platform/desk.h"
#include "platform/forms/form.h"
#include "session/session.h"
#include "transfer/dongle_link.h"
#include "transfer/word_engine.h"

namespace bitlux::zt72518 {

/// The control panel of the ZT7251x family: one form to the user, made of parts that bring their
/// controls and procedures.
class PanelForm : public forms::Form {
public:
    /// What the form works with; all outlive it.
    struct Parts {
        Session& session;
        WordEngine& engine;
        DongleLink& dongle;
        const Desk& desk;
        const Clock& clock;
    };

    PanelForm(forms::FormSet& set, const Parts& parts);

    [[nodiscard]] PanelVariables& variables() { return variables_; }

private:
    PanelVariables variables_;

public:
    ChipLink link;
    forms::ControlArray<forms::Label> Label_Liste; ///< 5 and 6 Start and Stop of the loop
    Sequencer sequencer;
};

} // namespace bitlux::zt72518
