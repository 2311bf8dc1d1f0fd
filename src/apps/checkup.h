#pragma once

#include "apps/findings.h"
#include "apps/machine.h"
#include "platform/linux/node_holders.h"

#include <string>
#include <string_view>
#include <vector>

namespace bitlux {

/// Checks the dongles, their list and their rights.
Findings examineDongles(const Machine& machine, const DongleNumbers& numbers);

/// Checks the parallel ports, their drivers and their rights.
Findings examinePorts(const Machine& machine);

/// What a user has to do to get the rights of a group; empty for one who has them.
std::string groupFix(const Machine& machine, std::string_view group);

/// Adds which programs hold the node, and what to do about it.
void tellHolders(const std::vector<NodeHolder>& holders, Finding& finding);

} // namespace bitlux
