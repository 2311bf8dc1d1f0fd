#pragma once

#include <string>

namespace bitlux {

/// A reading of a part of the bench, for display.
struct Reading {
    std::string group;
    std::string name;
    std::string value;
};

} // namespace bitlux
