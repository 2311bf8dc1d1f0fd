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

    /// While a continuous run is on its button is hidden.
    [[nodiscard]] bool continuous() const { return !cmdSendContinuous.visible(); }

private:
    void sendOnce(const std::function<void()>& send);
    void sendPass();

    Session& session_;
    EventLoop& loop_;

public:
    forms::Button cmdSendOnce;
    forms::Button cmdSendContinuous;
    forms::Button cmdStopContinuous;
    forms::Button cmdCancelSingle;
};

} // namespace bitlux
