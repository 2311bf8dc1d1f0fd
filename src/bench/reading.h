#pragma once

#include <string>

namespace bitlux {

/// Something that can be seen at a part of the bench.
struct Reading {
    std::string group;
    std::string name;
    std::string value;
};

} // namespace bitlux
