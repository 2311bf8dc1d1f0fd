#include "apps/run_boxes.h"

#include "sending/multiple_run.h"

#include <array>
#include <optional>
#include <string>

#include <poll.h>
#include <unistd.h>

namespace bitlux {

namespace {

bool canBeRead(int milliseconds) {
    pollfd input{.fd = STDIN_FILENO, .events = POLLIN, .revents = 0};
    return poll(&input, 1, milliseconds) > 0;
}

/// What was typed up to the next Enter, without it; nothing at the end of the input.
std::optional<std::string> typedLine(const Interruption& interruption) {
    constexpr int slice = 50; // milliseconds that an interruption may have to wait
    while (!canBeRead(slice))
        interruption.check();
    std::array<char, 256> typed{};
    const ssize_t size = read(STDIN_FILENO, typed.data(), typed.size());
    if (size <= 0)
        return std::nullopt;
    std::string line(typed.data(), static_cast<std::size_t>(size));
    return line.substr(0, line.find('\n'));
}

} // namespace

MessageBox::Answer RunBoxes::show(const MessageBox& box) {
    if (printing)
        printing();
    if (isNotice(box))
        return TerminalBoxes::show(box);
    const bool isPause = box.title == MultipleRun::pausedTitle;
    if (isPause && isatty(STDIN_FILENO) == 1) {
        print(box);
        asking_ = true;
        const bool goesOn = askToGoOn();
        asking_ = false;
        if (goesOn)
            return MessageBox::Answer::Ok;
    } else {
        TerminalBoxes::show(box);
        if (isPause)
            errors() << "Nobody can be asked: the standard input is no terminal.\n";
    }
    hasEnded_ = true;
    if (ended)
        ended();
    return cautiousAnswer(box.buttons);
}

bool RunBoxes::askToGoOn() {
    for (;;) {
        errors() << "Enter continues, c cancels: " << std::flush;
        const std::optional<std::string> line = typedLine(interruption_);
        if (line && line->empty())
            return true;
        if (!line || line == "c" || line == "C")
            break;
    }
    errors() << "Cancelled.\n";
    return false;
}

} // namespace bitlux
