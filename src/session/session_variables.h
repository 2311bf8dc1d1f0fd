#pragma once

#include "session/session.h"

#include <cstdint>
#include <span>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

namespace bitlux {

/// Where a variable of the session lies. The words grow and shrink, other rows of elements do not;
/// what is behind a pointer to a constant, and the plain number, can only be read.
using VariablePlace =
    std::variant<bool*, std::uint8_t*, std::int16_t*, std::int32_t*, Flag*, std::string*,
                 std::vector<std::int16_t>*, std::span<std::int16_t>, std::span<std::int32_t>,
                 std::span<std::string>, std::int32_t, std::span<const PartTab>, const PortPins<8>*,
                 const PortPins<4>*, const QuickCommandTable*, const BatchLists*,
                 const std::vector<std::string>*>;

/// A variable of the session by name: its members, those of what Cancel brings back, BatchCount,
/// and MainTab, another name of ActiveMainTab.
struct SessionVariable {
    std::string_view name;
    VariablePlace (*place)(Session& session);
};

std::span<const SessionVariable> sessionVariables();

} // namespace bitlux
