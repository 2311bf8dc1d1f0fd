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
    std::string bus;                 ///< "dongle", "port", "ftdi" or empty
    std::string port;                ///< which one of this machine (portChoiceFrom), or empty
    std::string serial;              ///< of the dongle or the adapter, or empty
    std::string clock;               ///< as given, or empty
    bool keepsLines = false;         ///< the adapter's lines keep their levels at the end
    std::vector<std::string> faults; ///< of the dongle or the adapter on the virtual bench
    std::uint32_t seed = 1;
    std::string replies;               ///< hexadecimal numbers separated by commas
    std::vector<std::string> switches; ///< of the chip on the virtual bench, turned on

    [[nodiscard]] std::optional<Bus> chosenBus() const;
    /// The clock of the dongle, 0 to 3 from the fastest, where one is given.
    [[nodiscard]] std::optional<int> dongleClock() const;
    /// The clock of an adapter in bytes a second, where one is given.
    [[nodiscard]] std::optional<int> adapterClock() const;
};

/// Adds the options to a command; `busHelp` describes --bus for it. The result raises
/// CLI::ValidationError for options that exclude each other; to be called after parsing.
[[nodiscard]] std::function<void()> addOutletOptions(CLI::App& command, OutletOptions& options,
                                                     const std::string& busHelp);

/// The texts between the commas.
std::vector<std::string> splitAtCommas(const std::string& text);

} // namespace bitlux
