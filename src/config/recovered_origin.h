#pragma once

#include <string>
#include <string_view>

namespace bitlux {

// The record at the end of a file of unsaved work. The name of a file may have characters outside
// the code page of configurations, so it is escaped.
inline constexpr std::string_view recoveredFromKey = "[RecoveredFrom]";

std::string escapedName(std::string_view fileName);
std::string unescapedName(std::string_view text);

/// The name in the last record of a file; empty when that is another record.
std::string originIn(const std::string& fileName);

} // namespace bitlux
