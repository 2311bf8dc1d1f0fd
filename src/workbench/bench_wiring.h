#pragma once

#include "bench/bus_shape.h"
#include "session/session.h"

namespace bitlux {

/// How the settings in force wire and clock a device on the virtual bench.
BusShape busShapeOf(const Session& session);

} // namespace bitlux
