#pragma once

#include "panels/common/panel_part.h"

namespace bitlux::zt72537 {

class Watchdog;

/// The guided entry to Stop and Sleep mode: the page of the modes becomes a procedure in which the
/// user chooses the wake-up sources of the chip and the state of its watchdog.
class LowPower : public PanelPart {
public:
    explicit LowPower(const PanelContext& context);

private:
    void linkWakeUps();
    void linkCyclicSense();
    void OptMcr_Click(int mode);
    void CmdMcr2_Click();
    /// Shows the procedure, or the page of the modes.
    void guide(bool on);
    /// Shows a step of the procedure.
    void showStep(const ControlRef& frame);
    void goBack();
    [[nodiscard]] bool isComplete() const;
    void send();
    void choose(const ControlRef& option) const;
    [[nodiscard]] bool isChosen(const ControlRef& option) const;
    [[nodiscard]] bool isTicked(const ControlRef& box) const;

    Session& session_;
    WordEngine& engine_;
    MessageBoxes& boxes_;
    PanelControls& controls_;
    Watchdog& watchdog_;
};

} // namespace bitlux::zt72537
