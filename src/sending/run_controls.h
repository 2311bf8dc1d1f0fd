#pragma once

#include "platform/desk.h"
#include "platform/forms/controls.h"
#include "platform/forms/form.h"
#include "session/session.h"

#include <functional>

namespace bitlux {

/// The four run buttons of the main form, which the generic pages share, and their three states:
/// idle, sending once, sending continuously.
class RunControls {
public:
    RunControls(forms::Form& form, Session& session, EventLoop& loop);

    // What the pages send; set by the pages.
    std::function<void()> sendSingle;   ///< the word of the single-word page
    std::function<bool()> hasCommands;  ///< false after a message when there are none to send
    std::function<void()> sendMultiple; ///< the commands of the Batch page, once

    void cmdSendOnce_Click();
    /// Sends until cmdStopContinuous_Click is called, by a hand or by a failure; gives the event
    /// loop one turn a pass.
    void cmdSendContinuous_Click();
    /// Ends a continuous run; harmless when nothing runs.
    void cmdStopContinuous_Click();
    void cmdCancelSingle_Click();
    /// Sends once when its button offers it.
    void sendOnceIfOffered();

    /// While a continuous run is on its button is hidden.
    [[nodiscard]] bool continuous() const { return !cmdSendContinuous.visible(); }
    /// Either Send button can be pressed: nothing runs, or what runs was told to stop.
    [[nodiscard]] bool idle() const;
    /// The number of the present pass, or of the last one: from 1 in a continuous run, 1 in a
    /// single one.
    [[nodiscard]] int pass() const { return pass_; }

private:
    void sendOnce(const std::function<void()>& send);
    void sendPass();

    Session& session_;
    EventLoop& loop_;
    int pass_ = 0;

public:
    forms::Button cmdSendOnce;
    forms::Button cmdSendContinuous;
    forms::Button cmdStopContinuous;
    forms::Button cmdCancelSingle;
};

} // namespace bitlux
