#pragma once

#include "bench/model/model_part.h"

#include <memory>
#include <vector>

namespace bitlux {

/// Adds the switches that follow from a chip's description: for views with their own value, for
/// registers that can only be read or cleared, and for status bits that no part computes.
void addModelSwitches(SwitchTable& table, ModelStore& store,
                      const std::vector<std::unique_ptr<ModelPart>>& parts);

} // namespace bitlux
