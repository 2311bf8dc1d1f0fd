#pragma once

#include <functional>

namespace bitlux {

/// Options of the configuration dialog that take effect with the current state of their controls,
/// applied or not. The owner of the dialog sets the callbacks.
struct LiveOptions {
    /// "Use USB instead of Parallel Port"
    std::function<bool()> useUsb = [] { return false; };
    std::function<bool()> logForever; ///< "Keep recording messages until the Session Log is full"
};

} // namespace bitlux
