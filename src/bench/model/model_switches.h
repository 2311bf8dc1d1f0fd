#pragma once

#include "bench/model/model_part.h"

#include <memory>
#include <vector>

namespace bitlux {

/// Adds the switches that a chip has by its description: of views with a value of their own, of
/// registers that are only read or cleared, and of the status bits, as far as no part makes them.
void addModelSwitches(SwitchTable& table, ModelStore& store,
                      const std::vector<std::unique_ptr<ModelPart>>& parts);

} // namespace bitlux
