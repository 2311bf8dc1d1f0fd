#pragma once

#include <array>
#include <csignal>
#include <optional>

namespace bitlux {

/// Records SIGINT, SIGTERM and SIGHUP while this exists; there is at most one instance. The first
/// signal is only recorded, a second of its kind ends the program. A signal that was ignored before
/// stays ignored. Meanwhile writing to a closed output is a failure instead of a signal.
class EndSignals {
public:
    EndSignals();
    ~EndSignals();
    EndSignals(const EndSignals&) = delete;
    EndSignals& operator=(const EndSignals&) = delete;

    /// The number of the last signal.
    [[nodiscard]] static std::optional<int> received();

private:
    static constexpr std::array<int, 4> numbers{SIGINT, SIGTERM, SIGHUP, SIGPIPE};

    std::array<struct sigaction, numbers.size()> before_{};
};

} // namespace bitlux
