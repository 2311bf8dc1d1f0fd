#include "sending/multiple_run.h"

#include "platform/time_units.h"
#include "sending/word_fit.h"

#include <algorithm>

#include <fmt/format.h>

namespace bitlux {

/// The progress of a run, while this exists. A run that a handler starts during the wait of another
/// is replaced by that one at its end.
class MultipleRun::Shown {
public:
    Shown(MultipleRun& run, const RunProgress& progress) : run_(run), outer_(run.progress_) {
        run_.progress_ = progress;
    }
    ~Shown() {
        run_.progress_ = outer_;
        run_.progressChanged.raise();
    }
    Shown(const Shown&) = delete;
    Shown& operator=(const Shown&) = delete;

private:
    MultipleRun& run_;
    std::optional<RunProgress> outer_;
};

MultipleRun::MultipleRun(forms::Form& form, const Parts& parts)
    : parts_(parts), session_(parts.session) {
    form.procedure("DoSPIMultiple", [this] { DoSPIMultiple(); });
}

void MultipleRun::DoSPIMultiple() {
    if (parts_.log.full()) {
        refuse(fmt::format("The Session Log is full.  Please save or clear the log before "
                           "continuing.{}The last SPI word will not be sent.",
                           lineBreak));
        return;
    }
    session_.WordToSend.assign(static_cast<std::size_t>(std::max<int>(session_.SPIWordLength, 0)),
                               0);
    if (!progress_)
        abandoned_ = false;
    const forms::ListBox& list = parts_.commands.lstCommandsToSend;
    const std::size_t lines = list.count();
    const Shown shown(*this, {.lines = lines, .pass = parts_.run.pass(), .waitUntil = {}});
    for (std::size_t i = 0; i < lines && !hasEnded(); ++i) {
        progress_->line = i;
        progressChanged.raise();
        if (i >= list.count())
            throw Failure(
                Failure::Kind::OutOfRange,
                fmt::format("Subscript out of range: line {} of the list was removed", i + 1));
        if (!play(list.line(i), {.first = i == 0, .last = i + 1 == lines}))
            return;
    }
}

bool MultipleRun::play(const std::string& line, PlaceInPass place) {
    if (!isInstruction(line))
        return send(line, place);
    const CommandTokens tokens = splitCommand(line);
    if (tokens[1] == "Pause")
        return pause();
    if (tokens[1] == "Wait")
        return wait(tokens[2], tokens[3]);
    if (tokens[1] != "Set")
        return refuse("There was a problem.  No match found for '*' command.");
    setPins(tokens);
    return true;
}

bool MultipleRun::send(const std::string& name, PlaceInPass place) {
    const std::optional<std::size_t> row = session_.QuickCommandTable.lastRowNamed(name);
    if (!row || name.empty()) { // a free row has no name
        wordMissing.raise(name);
        return refuse("No Quick Commands are selected!");
    }
    const WordBits bits = session_.QuickCommandTable.bits(*row);
    const auto length = static_cast<std::size_t>(std::max<int>(session_.SPIWordLength, 0));
    if (bits.size() < length)
        throw commandDoesNotFit(name, bits.size(), session_.SPIWordLength);
    session_.WordToSend.assign(bits.begin(), bits.begin() + static_cast<std::ptrdiff_t>(length));
    parts_.engine.SendSPI();
    parts_.log.logWord(parts_.run.continuous(), place);
    return true;
}

bool MultipleRun::pause() {
    const MessageBox box{.text = fmt::format("SPI routine paused.  Click OK to continue,{}"
                                             "or click Cancel to stop.",
                                             lineBreak),
                         .title = pausedTitle,
                         .buttons = MessageBox::Buttons::OkCancel,
                         .icon = MessageBox::Icon::Information};
    if (parts_.boxes.show(box) == MessageBox::Answer::Ok)
        return true;
    parts_.run.cmdStopContinuous_Click();
    parts_.run.cmdCancelSingle_Click();
    return false;
}

bool MultipleRun::wait(std::string_view number, std::string_view unit) {
    const std::optional<std::int32_t> factor = millisecondsOf(unit);
    if (!factor)
        return refuse("There was a problem converting the units.");
    parts_.log.logLine(fmt::format("Waiting {} {} ...", number, unit), parts_.run.continuous());
    parts_.loop.turn();
    passTime(waitMilliseconds(number, *factor) * millisecond);
    parts_.log.logNote(hasEnded() ? "Wait Aborted" : "Done Waiting", parts_.run.continuous());
    return true;
}

void MultipleRun::passTime(std::int64_t nanoseconds) {
    const std::int64_t end = parts_.clock.nanoseconds() + nanoseconds;
    progress_->waitUntil = end;
    progressChanged.raise();
    for (std::int64_t left = nanoseconds; left > 0 && parts_.run.continues() && !hasEnded();
         left = end - parts_.clock.nanoseconds())
        parts_.loop.waitForEvents(left);
    progress_->waitUntil.reset();
    progressChanged.raise();
}

std::int64_t MultipleRun::remainingWait() const {
    if (!progress_ || !progress_->waitUntil)
        return 0;
    return std::max<std::int64_t>(*progress_->waitUntil - parts_.clock.nanoseconds(), 0);
}

void MultipleRun::setPins(const CommandTokens& tokens) {
    const ExtraPinRows& pins = parts_.extraPins;
    if (!pins.has(tokens[3]))
        pinMissing.raise(progress_->line, std::string(tokens[3]));
    for (int row = 0; row < ExtraPinRows::rowCount; ++row) {
        const forms::Label& label = pins.lblSetNow(row);
        if (!label.visible() || label.caption() != tokens[3])
            continue;
        if (tokens[2] == "HIGH:")
            setPin(pins.optSetHighNow(row), tokens, "already high");
        else if (tokens[2] == "LOW:")
            setPin(pins.optSetLowNow(row), tokens, "already low");
        else
            refuse("Internal Error.  Couldn't determine High or Low.");
    }
}

void MultipleRun::setPin(forms::OptionButton& option, const CommandTokens& tokens,
                         const char* already) {
    if (option.value())
        parts_.log.logNote(fmt::format("{} {} {} ({})", tokens[1], tokens[2], tokens[3], already),
                           parts_.run.continuous());
    else
        option.setValue(true);
}

bool MultipleRun::refuse(const std::string& text) {
    parts_.boxes.show({.text = text});
    parts_.run.cmdStopContinuous_Click();
    return false;
}

} // namespace bitlux
