#pragma once

#include "platform/adapter.h"
#include "platform/clock.h"
#include "platform/marker_files.h"
#include "platform/parallel_port.h"
#include "platform/usb_endpoint.h"

namespace bitlux {

/// The hardware that a program drives chips with; all of it outlives the program.
struct Hardware {
    ParallelPort& port;
    UsbHost& usb;
    const Clock& clock;
    const MarkerFiles* markers = nullptr; ///< those in the user's folder when there are none
    AdapterHost* adapters = nullptr;      ///< null where there can be none
};

} // namespace bitlux
