#pragma once

#include <string_view>

namespace bitlux {

/// Files whose mere presence switches hidden options of a panel on. Upper and lower case letters of
/// their names are the same.
class MarkerFiles {
public:
    virtual ~MarkerFiles() = default;
    /// Looks anew at each call.
    [[nodiscard]] virtual bool present(std::string_view name) const = 0;
};

} // namespace bitlux
