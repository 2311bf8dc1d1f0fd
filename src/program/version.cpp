#include "program/version.h"

namespace bitlux {

const char* const programVersion = BITLUX_VERSION;

} // namespace bitlux
