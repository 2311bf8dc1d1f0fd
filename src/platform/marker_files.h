#pragma once

#include <string_view>

namespace bitlux {

/// Files whose presence enables hidden options of a panel. The case of their names is ignored.
class MarkerFiles {
public:
    virtual ~MarkerFiles() = default;
    /// Checks at each call.
    [[nodiscard]] virtual bool present(std::string_view name) const = 0;
};

} // namespace bitlux
