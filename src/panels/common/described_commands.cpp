#include "panels/common/described_commands.h"

#include "panels/common/hex_value.h"
#include "platform/conversions.h"
#include "platform/failure.h"
#include "platform/printable.h"

#include <fmt/format.h>

namespace bitlux {

std::vector<std::string> DescribedCommands::play(int line, const std::string& name,
                                                 const std::string& value) {
    const LineMeaning* meaning = index_.find(name);
    if (meaning == nullptr) {
        constexpr std::size_t longestShown = 40;
        throw Failure(Failure::Kind::OutOfRange, fmt::format("Line {}: there is no command \"{}\"",
                                                             line, printable(name, longestShown)));
    }
    if (meaning->read != nullptr) {
        chips::View view = *meaning->read;
        view.address = meaning->line->address.value_or(view.address);
        return {hex(words_.read(view))};
    }
    if (meaning->written != nullptr)
        words_.write(*meaning->written, hexValue(value, meaning->written->width()));
    else
        execute(*meaning->command);
    return {};
}

} // namespace bitlux
