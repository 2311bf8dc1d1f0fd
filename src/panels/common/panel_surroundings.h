#pragma once

#include "platform/clock.h"
#include "platform/desk.h"
#include "platform/marker_files.h"
#include "session/session.h"
#include "transfer/dongle_link.h"
#include "transfer/word_engine.h"

#include <functional>

namespace bitlux {

/// The dependencies of panels; all outlive them.
struct PanelSurroundings {
    Session& session;
    WordEngine& engine;
    DongleLink& dongle;
    const Desk& desk;
    const MarkerFiles& markers;
    const Clock& clock;
    /// The configuration dialog shows the session's SPI type.
    std::function<void()> showType = [] {};
};

} // namespace bitlux
