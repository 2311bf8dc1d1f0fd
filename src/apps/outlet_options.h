#pragma once

#include "program/word_settings.h"

#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <vector>

namespace CLI {
class App;
}

namespace bitlux {

/// Where a command sends to.
struct OutletOptions {
    std::string bench;               ///< a device of the virtual bench, empty for this machine
    std::string bus;                 ///< "dongle", "port" or empty
    std::string port;                ///< which one of this machine (portChoiceFrom), or empty
    std::string serial;              ///< the serial number of the dongle, or empty
    std::vector<std::string> faults; ///< of the dongle on the virtual bench
    std::uint32_t seed = 1;
    std::string replies;               ///< hexadecimal numbers between commas
    std::vector<std::string> switches; ///< of the chip on the virtual bench, turned on

    [[nodiscard]] std::optional<Bus> chosenBus() const;
};

/// Adds the options to a command; `busHelp` is what --bus does there. The result raises
/// CLI::ValidationError for options that do not go together; to be called when all are parsed.
[[nodiscard]] std::function<void()> addOutletOptions(CLI::App& command, OutletOptions& options,
                                                     const std::string& busHelp);

/// Texts between commas.
std::vector<std::string> splitAtCommas(const std::string& text);

} // namespace bitlux
