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

/// The destination of a command.
struct OutletOptions {
    std::string bench;               ///< a device of the virtual bench, empty for this machine
    std::string bus;                 ///< "dongle", "port" or empty
    std::string port;                ///< which one of this machine (portChoiceFrom), or empty
    std::string serial;              ///< the serial number of the dongle, or empty
    std::vector<std::string> faults; ///< of the dongle on the virtual bench
    std::uint32_t seed = 1;
    std::string replies;               ///< hexadecimal numbers separated by commas
    std::vector<std::string> switches; ///< of the chip on the virtual bench, turned on

    [[nodiscard]] std::optional<Bus> chosenBus() const;
};

/// Adds the options to a command; `busHelp` describes --bus for it. The result raises
/// CLI::ValidationError for options that exclude each other; to be called after parsing.
[[nodiscard]] std::function<void()> addOutletOptions(CLI::App& command, OutletOptions& options,
                                                     const std::string& busHelp);

/// The texts between the commas.
std::vector<std::string> splitAtCommas(const std::string& text);

} // namespace bitlux
