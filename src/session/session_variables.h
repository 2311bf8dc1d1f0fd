#pragma once

#include "session/session.h"

#include <cstdint>
#include <span>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

namespace bitlux {

/// Pointer to a variable of the session. Words can change their length, other arrays cannot.
/// Variables behind a pointer to const, and plain numbers, are read-only.
using VariablePlace =
    std::variant<bool*, std::uint8_t*, std::int16_t*, std::int32_t*, Flag*, std::string*,
                 std::vector<std::int16_t>*, std::span<std::int16_t>, std::span<std::int32_t>,
                 std::span<std::string>, std::int32_t, std::span<const PartTab>, const PortPins<8>*,
                 const PortPins<4>*, const QuickCommandTable*, const BatchLists*,
                 const std::vector<std::string>*>;

/// A variable of the session by name: its members, those of SavedDialog, BatchCount, and MainTab,
/// an alias of ActiveMainTab.
struct SessionVariable {
    std::string_view name;
    VariablePlace (*place)(Session& session);
};

std::span<const SessionVariable> sessionVariables();

} // namespace bitlux
