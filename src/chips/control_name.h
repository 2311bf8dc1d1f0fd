#pragma once

#include <string>

namespace bitlux::chips {

/// Name of a control, or of an element of a control array; none when the name is empty.
struct ControlName {
    std::string name;
    int index = -1; ///< -1 for a control that is no element

    [[nodiscard]] bool exists() const { return !name.empty(); }
    bool operator==(const ControlName&) const = default;
};

/// As "R_MUX(3)" or "Cm_MUX_W".
std::string text(const ControlName& name);

/// Controls of one name: `first` to `last` of an array, -1 for all.
struct ControlRange {
    std::string name;
    int first = -1;
    int last = -1;
};

} // namespace bitlux::chips
