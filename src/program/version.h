#pragma once

namespace bitlux {

/// As "1.2.3".
extern const char* const programVersion;

} // namespace bitlux
