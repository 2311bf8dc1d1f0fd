#pragma once

#include <string>

namespace bitlux::chips {

/// Name of a control, or of an element of a control array; no control when the name is empty.
struct ControlName {
    std::string name;
    int index = -1; ///< -1 for a control outside of arrays

    [[nodiscard]] bool exists() const { return !name.empty(); }
    bool operator==(const ControlName&) const = default;
};

/// As "R_MUX(3)" or "Cm_MUX_W".
std::string text(const ControlName& name);

/// Controls with the same name: `first` to `last` of an array, -1 for all.
struct ControlRange {
    std::string name;
    int first = -1;
    int last = -1;
};

} // namespace bitlux::chips
