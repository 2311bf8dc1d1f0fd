// The ways out of the program: each ends in Program::end.

#include "program/program.h"

#include "platform/scoped_value.h"
#include "transfer/extra_pins.h"

#include <exception>

namespace bitlux {

void Program::itemExit_Click() {
    mainForm_->run.cmdStopContinuous_Click();
    panels_.unloadAtEnd(); // while the dongle can still be commanded
    const bool hadDongle = session_.USBReady;
    dongle_.close();
    addWait_->setVisible(false);
    saveBatch_->setVisible(false);
    dialog_->setVisible(false); // its controls keep what they hold for the question that follows
    close();
    if (running_ && hadDongle)
        Start_USB();
}

void Program::close(Closing who) {
    if (closing_ || !running_)
        return;
    // When the question is not answered it can be asked again.
    const ScopedValue closing(closing_, true);
    const ScopedValue systemEnds(systemEnds_, who == Closing::System);
    forms_.perform("frmMain.Form_QueryUnload", [this] { mainForm_->call("Form_QueryUnload"); });
    mainForm_->call("Form_Unload");
}

void Program::exit() {
    if (closing_ || !running_)
        return;
    const ScopedValue settled(settled_, false);
    {
        const ScopedValue closing(closing_, true);
        forms_.perform("frmMain.itemExit.Click",
                       [this] { mainForm_->run.cmdStopContinuous_Click(); });
        if (!mayEnd())
            return;
    }
    forms_.perform("frmMain.itemExit.Click", [this] { itemExit_Click(); });
}

void Program::Form_Unload() {
    if (settled_ || mayEnd())
        end();
}

bool Program::mayEnd() {
    const MessageBox question{.text = "Save configuration before exiting?",
                              .title = "Last Chance to Save",
                              .buttons = MessageBox::Buttons::YesNo,
                              .icon = MessageBox::Icon::Question,
                              .canBeLeft = true};
    const MessageBox::Answer answer =
        session_.ConfigDirty == ConstOn ? desk_.boxes.show(question) : MessageBox::Answer::No;
    if (answer != MessageBox::Answer::Yes && answer != MessageBox::Answer::No)
        return false; // the box was left
    settled_ = answer == MessageBox::Answer::No || saveBeforeEnd();
    return settled_ || systemEnds_;
}

bool Program::saveBeforeEnd() {
    forms_.perform("frmMain.itemSave.Click", [this] { mainForm_->files.itemSave_Click(); });
    return session_.ConfigDirty != ConstOn;
}

void Program::end() {
    if (!running_)
        return;
    running_ = false;
    mainForm_->run.cmdStopContinuous_Click();
    mainForm_->unsaved.end(settled_);
    mainForm_->multiple.abandon();
    panels_.abandonRuns();
    unloadPanels();
    dongle_.close();
    restPins();
    adapters_.leave();
    ended.raise();
}

void Program::unloadPanels() {
    try {
        panels_.unloadAtEnd();
    } catch (...) { // an unanswered box must not keep the pins from their idle levels
        session_.LinkFailed = true;
    }
}

void Program::restPins() {
    if (!session_.ParallelPortReady || session_.LPTPortAddress == 0)
        return;
    try {
        pins_.rest();
        if (hasControlPin(session_)) {
            lowerControlPins(session_);
            pins_.ToggleControlPort();
        }
    } catch (const std::exception&) { // a port that is gone needs no idle levels
        session_.ParallelPortReady = false;
    }
}

} // namespace bitlux
