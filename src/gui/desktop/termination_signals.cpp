#include "gui/desktop/termination_signals.h"

#include <cerrno>
#include <utility>

#include <fcntl.h>
#include <unistd.h>

#include <QSocketNotifier>

namespace bitlux::gui {

namespace {

volatile sig_atomic_t writeEnd = -1;

void notify(int) {
    const int error = errno;
    const char byte = 1;
    [[maybe_unused]] const ssize_t written = write(writeEnd, &byte, 1);
    errno = error;
}

} // namespace

TerminationSignals::TerminationSignals(std::function<void()> arrived) {
    if (pipe2(pipe_.data(), O_CLOEXEC | O_NONBLOCK) != 0)
        return; // the signals then end the program by default
    writeEnd = pipe_[1];
    auto* notifier = new QSocketNotifier(pipe_[0], QSocketNotifier::Read, this);
    connect(notifier, &QSocketNotifier::activated, this, [this, arrived = std::move(arrived)] {
        char byte = 0;
        if (read(pipe_[0], &byte, 1) == 1)
            arrived();
    });
    struct sigaction action {};
    action.sa_handler = notify;
    action.sa_flags = SA_RESTART;
    for (std::size_t i = 0; i < numbers.size(); ++i) {
        sigaction(numbers[i], nullptr, &before_[i]);
        if (before_[i].sa_handler != SIG_IGN)
            sigaction(numbers[i], &action, nullptr);
    }
}

TerminationSignals::~TerminationSignals() {
    if (pipe_[0] < 0)
        return;
    for (std::size_t i = 0; i < numbers.size(); ++i)
        sigaction(numbers[i], &before_[i], nullptr);
    for (const int end : pipe_)
        close(end);
}

} // namespace bitlux::gui
