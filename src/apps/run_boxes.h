#pragma once

#include "apps/standard_input.h"
#include "apps/terminal_desk.h"

#include <functional>

namespace bitlux {

/// The message boxes of a run on a terminal. A pause asks the user of the terminal; without a
/// terminal, and with any other box, the run ends.
class RunBoxes : public TerminalBoxes {
public:
    /// Answers are lines of `input`; all outlive this.
    RunBoxes(std::ostream& errors, StandardInput& input) : TerminalBoxes(errors), input_(input) {}

    MessageBox::Answer show(const MessageBox& box) override;

    /// Whether a pause continues without a question.
    bool passesPauses = false;
    /// A message is printed, and the run goes on.
    bool passesMessages = false;
    /// Called before anything is printed.
    std::function<void()> printing;
    /// Called when a box has ended the run.
    std::function<void()> ended;
    /// Whether a box ended the run: with a message, or a cancelled pause.
    [[nodiscard]] bool hasEnded() const { return hasEnded_; }

private:
    [[nodiscard]] bool askToGoOn();

    StandardInput& input_;
    bool hasEnded_ = false;
};

} // namespace bitlux
