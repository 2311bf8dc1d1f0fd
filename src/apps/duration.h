#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace CLI {
class App;
class Option;
} // namespace CLI

namespace bitlux {

/// "200ms", "1.5s" or a number of milliseconds, in nanoseconds; nothing for any other text, for 0,
/// and beyond a day.
std::optional<std::int64_t> durationFrom(std::string_view text);

/// Adds an option that takes such a time into `nanoseconds`.
CLI::Option& addDuration(CLI::App& command, const std::string& name, std::int64_t& nanoseconds,
                         const std::string& help);

} // namespace bitlux
