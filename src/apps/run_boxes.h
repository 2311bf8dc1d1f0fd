#pragma once

#include "apps/terminal_desk.h"
#include "bench/interruptible.h"

#include <functional>

namespace bitlux {

/// The message boxes of a run on a terminal. A pause asks whoever sits there; without anybody, and
/// with any other box, the run ends.
class RunBoxes : public TerminalBoxes {
public:
    /// `interruption` is asked while a question waits, and outlives this.
    RunBoxes(std::ostream& errors, const Interruption& interruption)
        : TerminalBoxes(errors), interruption_(interruption) {}

    MessageBox::Answer show(const MessageBox& box) override;

    /// Called before anything is printed.
    std::function<void()> printing;
    /// Called when a box has ended the run.
    std::function<void()> ended;
    /// Whether one has: with a message, or with a pause that was cancelled.
    [[nodiscard]] bool hasEnded() const { return hasEnded_; }
    /// Whether a question stands on the terminal.
    [[nodiscard]] bool asking() const { return asking_; }

private:
    [[nodiscard]] bool askToGoOn();

    const Interruption& interruption_;
    bool hasEnded_ = false;
    bool asking_ = false;
};

} // namespace bitlux
