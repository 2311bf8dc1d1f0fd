#pragma once

#include "panels/common/repeated_read.h"
#include "platform/event.h"

namespace bitlux::zt72361 {

class Watchdog;

/// The watchdog's state in each mode of the chip, the procedure for Stop mode, the automatic reads,
/// and the label of the byte that was sent last.
class Modes : public PanelPart {
public:
    explicit Modes(const PanelContext& context);

private:
    void addHandlers();
    void writes(const chips::Register& target, std::uint64_t word);
    void wrote(const chips::Line& line);
    void CmdEnterStop_Click();
    void OptCan_Click(bool sleeps);
    void showSent();
    void send(const ControlRef& option, const char* button) const;

    const chips::Register& mode_;
    Session& session_;
    WordEngine& engine_;
    MessageBoxes& boxes_;
    PanelControls& controls_;
    Watchdog& watchdog_;
    RepeatedRead autoRead_;
    Subscription leaving_;
};

} // namespace bitlux::zt72361
