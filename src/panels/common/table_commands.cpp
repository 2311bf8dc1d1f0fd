#include "panels/common/table_commands.h"

#include "panels/common/hex_value.h"
#include "platform/conversions.h"
#include "platform/failure.h"
#include "platform/printable.h"

#include <fmt/format.h>

namespace bitlux {

std::vector<std::string> TableCommands::play(int line, const std::string& name,
                                             const std::string& value) {
    for (const oldchips::Register& known : table_) {
        if (known.stem.empty())
            continue;
        if (known.lines.write && name == writeLine(known)) {
            words_.write(known, hexValue(value, static_cast<int>(known.writeCaptions.size())));
            return {};
        }
        for (const RegisterView view : {RegisterView::Low, RegisterView::High}) {
            const bool there = view == RegisterView::Low ? known.low.exists() : known.high.exists();
            if (there && name == readLine(known, view))
                return {hex(words_.read(known, view))};
        }
    }
    constexpr std::size_t longestShown = 40;
    throw Failure(Failure::Kind::OutOfRange, fmt::format("Line {}: there is no command \"{}\"",
                                                         line, printable(name, longestShown)));
}

} // namespace bitlux
