#pragma once

#include "platform/desk.h"

#include <set>
#include <string>

namespace bitlux {

/// The message boxes of failed transfers. Within a run the same text is shown once, however many
/// words fail.
class FailureBoxes : public MessageBoxes {
public:
    /// `boxes` outlives this.
    explicit FailureBoxes(MessageBoxes& boxes) : boxes_(boxes) {}

    MessageBox::Answer show(const MessageBox& box) override;

    /// A run, during its lifetime. A run within another shows all messages again.
    class Run {
    public:
        explicit Run(FailureBoxes& boxes) : boxes_(boxes), outer_(boxes.run_) {
            boxes_.run_ = this;
        }
        ~Run() { boxes_.run_ = outer_; }
        Run(const Run&) = delete;
        Run& operator=(const Run&) = delete;

    private:
        friend FailureBoxes;

        FailureBoxes& boxes_;
        Run* outer_;
        std::set<std::string> told_;
    };

private:
    MessageBoxes& boxes_;
    Run* run_ = nullptr;
};

} // namespace bitlux
