#pragma once

#include <tuple>
#include <vector>

namespace bitlux::test {

/// The cases of a test, taken apart by `for (const auto& [what, it, has] : Rows<...>{...})`.
template <typename... Columns>
using Rows = std::vector<std::tuple<Columns...>>;

/// A case of a list whose columns have the same types in every row.
template <typename... Columns>
auto row(Columns... columns) {
    return std::tuple<Columns...>(columns...);
}

} // namespace bitlux::test
