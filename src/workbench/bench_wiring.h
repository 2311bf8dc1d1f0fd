#pragma once

#include "bench/bus_shape.h"
#include "session/session.h"

namespace bitlux {

/// How the settings in force wire a device on the virtual bench, for words of an SPI type.
BusShape busShapeOf(const Session& session, int type);

} // namespace bitlux
