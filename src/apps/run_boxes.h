#pragma once

#include "apps/standard_input.h"
#include "apps/terminal_desk.h"

#include <functional>

namespace bitlux {

/// The message boxes of a run on a terminal. A pause asks whoever sits there; without anybody, and
/// with any other box, the run ends.
class RunBoxes : public TerminalBoxes {
public:
    /// Answers are lines of `input`; all outlive this.
    RunBoxes(std::ostream& errors, StandardInput& input) : TerminalBoxes(errors), input_(input) {}

    MessageBox::Answer show(const MessageBox& box) override;

    /// A pause goes on at once, without anybody.
    bool passesPauses = false;
    /// A message is told, and the run goes on.
    bool passesMessages = false;
    /// Called before anything is printed.
    std::function<void()> printing;
    /// Called when a box has ended the run.
    std::function<void()> ended;
    /// Whether one has: with a message, or with a pause that was cancelled.
    [[nodiscard]] bool hasEnded() const { return hasEnded_; }

private:
    [[nodiscard]] bool askToGoOn();

    StandardInput& input_;
    bool hasEnded_ = false;
};

} // namespace bitlux
