#include "sending/run_controls.h"

namespace bitlux {

namespace {

constexpr std::int16_t singleWordTab = 1;
constexpr std::int16_t batchTab = 2;
constexpr std::int16_t firstPartTab = 3;
constexpr std::int16_t lastSendingPartTab = 6;
constexpr std::int32_t bytewiseLinkPart = 72517; // the one part tab that sends plain words

/// What there is to send changes by events alone, which end the sleep.
constexpr std::int64_t sleepWithoutWords = 1'000'000'000;

} // namespace

/// A run, while this exists.
class RunControls::UnderWay {
public:
    UnderWay(RunControls& controls, State first)
        : state(first), outer(controls.run_), controls_(controls), messages_(controls.failures_) {
        controls_.run_ = this;
        controls_.showButtons();
    }
    ~UnderWay() {
        controls_.run_ = outer;
        controls_.showButtons();
    }
    UnderWay(const UnderWay&) = delete;
    UnderWay& operator=(const UnderWay&) = delete;

    State state;
    bool aborted = false;
    UnderWay* const outer; ///< that this one began in

private:
    RunControls& controls_;
    FailureBoxes::Run messages_;
};

RunControls::RunControls(forms::Form& form, Session& session, EventLoop& loop,
                         FailureBoxes& failures)
    : session_(session),
      loop_(loop),
      failures_(failures),
      cmdSendOnce(form, "cmdSendOnce", "&Send Once"),
      cmdSendContinuous(form, "cmdSendContinuous", "Send Con&tinuously"),
      cmdStopContinuous(form, "cmdStopContinuous", "S&top"),
      cmdCancelSingle(form, "cmdCancelSingle", "&Cancel"),
      cmdAbort(form, "cmdAbort", "Abort") {
    cmdStopContinuous.setTooltip("End the waits and stop behind this pass; its lines that are left "
                                 "are sent at once");
    cmdCancelSingle.setTooltip("End the waits; the lines that are left are sent at once");
    cmdAbort.setTooltip("End the run here; nothing more is sent (Shift+Esc)");
    showButtons();
    form.procedure("cmdSendOnce_Click", [this] { cmdSendOnce_Click(); });
    form.procedure("cmdSendContinuous_Click", [this] { cmdSendContinuous_Click(); });
    form.procedure("cmdStopContinuous_Click", [this] { cmdStopContinuous_Click(); });
    form.procedure("cmdCancelSingle_Click", [this] { cmdCancelSingle_Click(); });
    form.procedure("cmdAbort_Click", [this] { cmdAbort_Click(); });
    form.keyProcedure("cmdSendOnce_KeyDown", [this](forms::KeyCode code) {
        if (code == forms::KeyCode::Enter)
            cmdSendOnce_Click();
    });
}

RunControls::State RunControls::state() const {
    return run_ == nullptr ? State::Idle : run_->state;
}

bool RunControls::aborted() const {
    return run_ != nullptr && run_->aborted;
}

void RunControls::showButtons() {
    const State now = state();
    cmdSendOnce.setVisible(offered_ && now != State::Once);
    cmdSendOnce.setEnabled(now != State::Continuous);
    cmdSendContinuous.setVisible(offered_ && now != State::Continuous);
    cmdSendContinuous.setEnabled(now != State::Once);
    cmdStopContinuous.setVisible(now == State::Continuous);
    cmdCancelSingle.setVisible(now == State::Once);
    cmdAbort.setVisible(run_ != nullptr && !run_->aborted);
}

void RunControls::offerSend(bool offered) {
    offered_ = offered;
    showButtons();
}

void RunControls::cmdSendOnce_Click() {
    if (session_.ActiveMainTab == singleWordTab)
        sendOnce(sendSingle);
    else if (session_.ActiveMainTab == batchTab && hasCommands())
        sendOnce(sendMultiple);
}

void RunControls::sendOnce(const std::function<void()>& send) {
    UnderWay run(*this, State::Once);
    pass_ = 1;
    send();
}

void RunControls::cmdSendContinuous_Click() {
    UnderWay run(*this, State::Continuous);
    try {
        continuousBegins.raise();
        for (int pass = 1; run.state == State::Continuous; ++pass) {
            pass_ = pass;
            const bool sent = sendPass();
            if (session_.SessionLogEnabled == ConstOn &&
                session_.ContinuousLogCount <= session_.ContinuousLogLimit)
                ++session_.ContinuousLogCount;
            if (sent)
                loop_.turn();
            else
                loop_.waitForEvents(sleepWithoutWords);
        }
    } catch (...) {
        cmdStopContinuous_Click();
        throw;
    }
}

bool RunControls::sendPass() {
    const std::int16_t tab = session_.ActiveMainTab;
    if (tab == batchTab)
        return sendMultiple();
    bool sends = tab == singleWordTab;
    if (tab >= firstPartTab && tab <= lastSendingPartTab) {
        const auto record = static_cast<std::size_t>(tab - firstPartTab);
        sends = session_.PartTabs.at(record).PartNumber == bytewiseLinkPart;
    }
    if (sends)
        sendSingle();
    return sends;
}

void RunControls::cmdStopContinuous_Click() {
    for (UnderWay* run = run_; run != nullptr; run = run->outer)
        if (run->state == State::Continuous)
            run->state = State::Cancelled;
    session_.ContinuousLogCount = 1;
    showButtons();
}

void RunControls::sendOnceIfOffered() {
    if (cmdSendOnce.enabled() && cmdSendOnce.visible())
        cmdSendOnce_Click();
}

void RunControls::cmdCancelSingle_Click() {
    for (UnderWay* run = run_; run != nullptr; run = run->outer)
        run->state = State::Cancelled;
    showButtons();
}

void RunControls::cmdAbort_Click() {
    for (UnderWay* run = run_; run != nullptr; run = run->outer)
        run->aborted = true;
    cmdStopContinuous_Click();
    cmdCancelSingle_Click();
}

} // namespace bitlux
