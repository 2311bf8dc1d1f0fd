#pragma once

#include <array>
#include <csignal>
#include <functional>

#include <QObject>

namespace bitlux::gui {

/// SIGTERM and SIGINT as events of the event loop, while this exists; there is at most one
/// instance. A signal that was ignored before stays ignored.
class TerminationSignals : public QObject {
public:
    explicit TerminationSignals(std::function<void()> arrived);
    ~TerminationSignals() override;

private:
    static constexpr std::array<int, 2> numbers{SIGTERM, SIGINT};

    std::array<int, 2> pipe_{-1, -1};
    std::array<struct sigaction, numbers.size()> before_{};
};

} // namespace bitlux::gui
