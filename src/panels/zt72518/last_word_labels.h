#pragma once

#include "panels/common/panel_part.h"
#include "platform/event.h"

#include <cstddef>
#include <string>

namespace bitlux::zt72518 {

/// The labels that show the last word sent and the last word received while the panel is active:
/// Label_Liste(0) to (2) and (3), (7), (8).
class LastWordLabels : public PanelPart {
public:
    explicit LastWordLabels(const PanelContext& context);

private:
    void show(int label, const std::string& text) const;
    void showSent();
    void showReceived();
    [[nodiscard]] int sent(std::size_t element) const;
    [[nodiscard]] int nibble(int lowBit) const;
    [[nodiscard]] int ones(int lowBit) const;

    PanelControls& controls_;
    const Session& session_;
    const WordEngine& engine_;
    Subscription leaving_;
    Subscription transferred_;
};

} // namespace bitlux::zt72518
