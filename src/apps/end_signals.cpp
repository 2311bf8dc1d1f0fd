#include "apps/end_signals.h"

namespace bitlux {

namespace {

volatile std::sig_atomic_t arrived = 0;

void note(int number) {
    arrived = number;
}

} // namespace

EndSignals::EndSignals() {
    arrived = 0;
    for (std::size_t i = 0; i < numbers.size(); ++i) {
        struct sigaction action {};
        const bool ignored = numbers[i] == SIGPIPE;
        action.sa_handler = ignored ? SIG_IGN : note;
        action.sa_flags = ignored ? 0 : SA_RESTART | static_cast<int>(SA_RESETHAND);
        sigaction(numbers[i], nullptr, &before_[i]);
        if (before_[i].sa_handler != SIG_IGN)
            sigaction(numbers[i], &action, nullptr);
    }
}

EndSignals::~EndSignals() {
    for (std::size_t i = 0; i < numbers.size(); ++i)
        sigaction(numbers[i], &before_[i], nullptr);
}

std::optional<int> EndSignals::received() {
    const int number = arrived;
    return number == 0 ? std::nullopt : std::optional(number);
}

} // namespace bitlux
