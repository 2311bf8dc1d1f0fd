#include "sending/word_fit.h"

#include "platform/printable.h"

#include <fmt/format.h>

namespace bitlux {

Failure doesNotFit(std::string_view what, std::size_t bits, int wanted) {
    return {Failure::Kind::OutOfRange,
            fmt::format("{} has {} bits, but words of {} bits are sent now: a part tab or a panel "
                        "has set that length.",
                        what, bits, wanted)};
}

Failure commandDoesNotFit(std::string_view name, std::size_t bits, int wanted) {
    constexpr std::size_t longestName = 40;
    return doesNotFit(fmt::format("The Quick Command \"{}\"", printable(name, longestName)), bits,
                      wanted);
}

} // namespace bitlux
