#include "sending/run_controls.h"

namespace bitlux {

namespace {

constexpr std::int16_t singleWordTab = 1;
constexpr std::int16_t batchTab = 2;
constexpr std::int16_t firstPartTab = 3;
constexpr std::int16_t lastSendingPartTab = 6;
constexpr std::int32_t bytewiseLinkPart = 72517; // the one part tab that sends plain words

} // namespace

RunControls::RunControls(forms::Form& form, Session& session, EventLoop& loop)
    : session_(session),
      loop_(loop),
      cmdSendOnce(form, "cmdSendOnce", "&Send Once"),
      cmdSendContinuous(form, "cmdSendContinuous", "Send Con&tinuously"),
      cmdStopContinuous(form, "cmdStopContinuous", "S&top"),
      cmdCancelSingle(form, "cmdCancelSingle", "&Cancel") {
    cmdStopContinuous.hide();
    cmdCancelSingle.hide();
    form.procedure("cmdSendOnce_Click", [this] { cmdSendOnce_Click(); });
    form.procedure("cmdSendContinuous_Click", [this] { cmdSendContinuous_Click(); });
    form.procedure("cmdStopContinuous_Click", [this] { cmdStopContinuous_Click(); });
    form.procedure("cmdCancelSingle_Click", [this] { cmdCancelSingle_Click(); });
    form.keyProcedure("cmdSendOnce_KeyDown", [this](forms::KeyCode code) {
        if (code == forms::KeyCode::Enter)
            cmdSendOnce_Click();
    });
}

void RunControls::cmdSendOnce_Click() {
    if (session_.ActiveMainTab == singleWordTab)
        sendOnce(sendSingle);
    else if (session_.ActiveMainTab == batchTab && hasCommands())
        sendOnce(sendMultiple);
}

void RunControls::sendOnce(const std::function<void()>& send) {
    const auto backToIdle = [this] {
        cmdSendContinuous.enable();
        cmdSendOnce.show();
        cmdCancelSingle.hide();
    };
    cmdSendContinuous.disable();
    cmdSendOnce.hide();
    cmdCancelSingle.show();
    pass_ = 1;
    try {
        send();
    } catch (...) { // a failure must not leave the buttons without a Send
        backToIdle();
        throw;
    }
    backToIdle();
}

void RunControls::cmdSendContinuous_Click() {
    cmdSendContinuous.hide();
    cmdSendOnce.disable();
    cmdStopContinuous.show();
    pass_ = 0;
    try {
        while (cmdStopContinuous.visible()) {
            ++pass_;
            sendPass();
            if (session_.SessionLogEnabled == ConstOn &&
                session_.ContinuousLogCount <= session_.ContinuousLogLimit)
                ++session_.ContinuousLogCount;
            loop_.turn();
        }
    } catch (...) {
        cmdStopContinuous_Click();
        throw;
    }
}

void RunControls::sendPass() {
    const std::int16_t tab = session_.ActiveMainTab;
    if (tab == singleWordTab) {
        sendSingle();
    } else if (tab == batchTab) {
        sendMultiple();
    } else if (tab >= firstPartTab && tab <= lastSendingPartTab) {
        const auto record = static_cast<std::size_t>(tab - firstPartTab);
        if (session_.PartTabs.at(record).PartNumber == bytewiseLinkPart)
            sendSingle();
    }
}

void RunControls::cmdStopContinuous_Click() {
    cmdStopContinuous.hide();
    cmdSendOnce.enable();
    cmdSendContinuous.show();
    session_.ContinuousLogCount = 1;
}

void RunControls::sendOnceIfOffered() {
    if (cmdSendOnce.enabled() && cmdSendOnce.visible())
        cmdSendOnce_Click();
}

bool RunControls::idle() const {
    return (cmdSendContinuous.enabled() && cmdSendContinuous.visible()) ||
           (cmdSendOnce.enabled() && cmdSendOnce.visible());
}

void RunControls::cmdCancelSingle_Click() {
    cmdSendContinuous.enable();
    cmdSendOnce.show();
    cmdCancelSingle.hide();
}

} // namespace bitlux
