#pragma once

#include "panels/common/panel_part.h"
#include "platform/event.h"

namespace bitlux::zt72537 {

/// The labels that show the byte of the last word in both directions, and the system status, for
/// every word through the dongle while the panel is open.
class LastWord : public PanelPart {
public:
    explicit LastWord(const PanelContext& context);

private:
    void showSent();
    void showReceived();

    PanelControls& controls_;
    const PanelWords& words_;
    const Session& session_;
    const WordEngine& engine_;
    Subscription leaving_;
    Subscription transferred_;
};

} // namespace bitlux::zt72537
