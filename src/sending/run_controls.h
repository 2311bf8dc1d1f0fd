#pragma once

#include "platform/desk.h"
#include "platform/event.h"
#include "platform/forms/controls.h"
#include "platform/forms/form.h"
#include "session/session.h"
#include "transfer/failure_boxes.h"

#include <cstdint>
#include <functional>

namespace bitlux {

/// The run of the generic pages and its five buttons, whose state depends on it.
class RunControls {
public:
    enum class State : std::uint8_t {
        Idle,
        Once,
        Continuous,
        Cancelled, ///< was asked to stop; has not ended yet
    };

    /// All outlive it.
    RunControls(forms::Form& form, Session& session, EventLoop& loop, FailureBoxes& failures);

    // What the pages send; set by the pages.
    std::function<void()> sendSingle;   ///< the word of the single-word page
    std::function<bool()> hasCommands;  ///< false after a message when there are none to send
    std::function<bool()> sendMultiple; ///< the commands of the Batch page, once; false when none

    /// A continuous run begins.
    Event<> continuousBegins;

    void cmdSendOnce_Click();
    /// Sends until cmdStopContinuous_Click is called, by the user or by a failure; runs the event
    /// loop once per pass, and sleeps in it while there is nothing to send.
    void cmdSendContinuous_Click();
    /// Ends a continuous run; harmless when nothing runs.
    void cmdStopContinuous_Click();
    /// Ends the waits of a run and of the runs within which it was started.
    void cmdCancelSingle_Click();
    /// Ends the run, and the runs within which it was started, without sending anything more;
    /// harmless when nothing runs.
    void cmdAbort_Click();
    /// Sends once if its button is available.
    void sendOnceIfOffered();
    /// Shows the two Send buttons, as far as the run allows, or hides them.
    void offerSend(bool offered);

    /// Of the run that began last; a handler may start one during a wait of another.
    [[nodiscard]] State state() const;
    [[nodiscard]] bool continuous() const { return state() == State::Continuous; }
    /// A run is active and was not asked to stop.
    [[nodiscard]] bool continues() const {
        return state() == State::Once || state() == State::Continuous;
    }
    /// The run that began last must not send anything more.
    [[nodiscard]] bool aborted() const;
    /// The number of the current pass, or of the last one: from 1 in a continuous run, 1 in a
    /// single one.
    [[nodiscard]] int pass() const { return pass_; }

private:
    class UnderWay;

    void sendOnce(const std::function<void()>& send);
    bool sendPass();
    void showButtons();

    Session& session_;
    EventLoop& loop_;
    FailureBoxes& failures_;
    UnderWay* run_ = nullptr; ///< the one that began last
    bool offered_ = true;
    int pass_ = 0;

public:
    forms::Button cmdSendOnce;
    forms::Button cmdSendContinuous;
    forms::Button cmdStopContinuous;
    forms::Button cmdCancelSingle;
    forms::Button cmdAbort; ///< visible until the run has ended, also after it was asked to stop
};

} // namespace bitlux
