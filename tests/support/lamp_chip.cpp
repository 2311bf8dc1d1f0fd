#include "support/lamp_chip.h"

#include "support/test_bench.h"

#include <string>

namespace bitlux::test {

namespace {
const std::string text = contentOf(BITLUX_SOURCE "/tests/support/lamp_chip.toml");
} // namespace

const char* const lampChip = text.c_str();

} // namespace bitlux::test
