#pragma once

#include "mapimport/map_builder.h"

namespace bitlux::mapimport {

/// Reads the peripherals below `device`. Raises MapError.
void readSvd(pugi::xml_node device, MapBuilder& builder);

} // namespace bitlux::mapimport
