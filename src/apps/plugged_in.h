#pragma once

#include "apps/machine.h"

#include <string>
#include <vector>

namespace bitlux {

/// A bus of a machine that words can be sent over.
struct PluggedIn {
    std::string options; ///< that choose it, as "--port lpt1"
    std::string text;    ///< what it is
};

/// The ports, then the dongles, then the adapters; whether they can be opened is another question.
std::vector<PluggedIn> findPluggedIn(const Machine& machine);

} // namespace bitlux
