#pragma once

#include "platform/failure.h"

#include <string>
#include <string_view>
#include <vector>

namespace bitlux {

/// A name as it is compared: in lower case, with one blank for each run of blanks and underscores,
/// and none at the ends.
std::string comparedName(std::string_view name);

/// Whether two names mean the same.
bool isSameName(std::string_view one, std::string_view other);

/// "There is no KIND "WANTED"" with up to three similar names, as Failure (OutOfRange).
Failure unknownName(std::string_view kind, std::string_view wanted,
                    const std::vector<std::string>& names);

} // namespace bitlux
