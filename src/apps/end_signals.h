#pragma once

#include <array>
#include <csignal>
#include <optional>

namespace bitlux {

/// SIGINT, SIGTERM and SIGHUP as something to ask for, for as long as this lives; there is one at a
/// time. The first signal is only noted, a second of its kind ends the program. A signal that was
/// ignored before stays ignored. An output that nobody reads any more is no signal meanwhile but a
/// failure of writing.
class EndSignals {
public:
    EndSignals();
    ~EndSignals();
    EndSignals(const EndSignals&) = delete;
    EndSignals& operator=(const EndSignals&) = delete;

    /// The number of the last one that arrived.
    [[nodiscard]] static std::optional<int> received();

private:
    static constexpr std::array<int, 4> numbers{SIGINT, SIGTERM, SIGHUP, SIGPIPE};

    std::array<struct sigaction, numbers.size()> before_{};
};

} // namespace bitlux
