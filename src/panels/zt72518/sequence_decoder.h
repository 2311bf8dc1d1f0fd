#pragma once

#include "panels/zt72518/panel_variables.h"

#include <functional>
#include <string_view>

namespace bitlux::zt72518 {

/// Turns the name of a sequence's command into the high byte of its word.
class SequenceDecoder {
public:
    explicit SequenceDecoder(PanelVariables& variables) : variables_(variables) {}

    /// Clicks the button `watchdog` of an index.
    std::function<void(int)> clickWatchdog = [](int) {};

    /// Sets SequenceHighByte (0 for a name that is none), SequenceIsWrite and SequenceIsWatchdog. A
    /// watchdog command is carried out at once.
    void Decod_Name(std::string_view name);

private:
    PanelVariables& variables_;
};

} // namespace bitlux::zt72518
