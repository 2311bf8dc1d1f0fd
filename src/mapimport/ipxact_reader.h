#pragma once

#include "mapimport/map_builder.h"

namespace bitlux::mapimport {

/// Reads the memory maps of a component. Raises MapError.
void readIpXact(pugi::xml_node component, MapBuilder& builder);

} // namespace bitlux::mapimport
