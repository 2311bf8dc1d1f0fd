#pragma once

#include <functional>

namespace bitlux {

/// Choices of the configuration dialog that count as they stand in its controls at the moment,
/// applied or not. Whoever owns the dialog answers.
struct LiveOptions {
    /// "Use USB instead of Parallel Port"
    std::function<bool()> useUsb = [] { return false; };
    std::function<bool()> logForever; ///< "Keep recording messages until the Session Log is full"
};

} // namespace bitlux
