#include "panels/common/sequence_player.h"

#include "platform/conversions.h"
#include "platform/failure.h"
#include "platform/forms/form_set.h"
#include "platform/time_units.h"

#include <algorithm>
#include <cstdint>
#include <initializer_list>

#include <fmt/format.h>

namespace bitlux {

namespace {

constexpr const char* waitCommand = "Wait";

} // namespace

/// The run button is disabled while this exists.
class SequencePlayer::ButtonOff {
public:
    explicit ButtonOff(forms::Button& button) : button_(button) { button_.disable(); }
    ~ButtonOff() { button_.enable(); }
    ButtonOff(const ButtonOff&) = delete;
    ButtonOff& operator=(const ButtonOff&) = delete;

private:
    forms::Button& button_;
};

/// A wait: the timer runs while this exists.
class SequencePlayer::Waiting {
public:
    Waiting(SequencePlayer& player, std::int32_t milliseconds, std::optional<std::int64_t> end)
        : player_(player) {
        player_.Timer1.setInterval(milliseconds);
        player_.Timer1.enable();
        player_.show(end);
    }
    ~Waiting() {
        player_.show({});
        player_.Timer1.disable();
    }
    Waiting(const Waiting&) = delete;
    Waiting& operator=(const Waiting&) = delete;

private:
    SequencePlayer& player_;
};

/// There is progress while the outermost of these exists.
class SequencePlayer::Shown {
public:
    explicit Shown(SequencePlayer& player) : player_(player), isOutermost_(!player.progress_) {
        if (isOutermost_) {
            messages_.emplace(player.parts_.failures);
            player_.progress_ = {.lines = player_.parts_.lists.last(), .waitUntil = {}};
        }
    }
    ~Shown() {
        if (!isOutermost_)
            return;
        player_.progress_.reset();
        player_.progressChanged.raise();
    }
    Shown(const Shown&) = delete;
    Shown& operator=(const Shown&) = delete;

private:
    SequencePlayer& player_;
    bool isOutermost_;
    std::optional<FailureBoxes::Run> messages_;
};

SequencePlayer::SequencePlayer(forms::Form& form, const Parts& parts)
    : parts_(parts),
      Cm_Run_Seq(form, "Cm_Run_Seq", "RUN"),
      Timer1(form, parts.style.wait.timer, 0),
      Ch_Loop(form, "Ch_Loop", parts.style.loop.caption),
      Cm_Stop_Loop(form, "Cm_Stop_Loop", "Stop Loop") {
    form.procedure("Cm_Run_Seq_Click", [this] { Cm_Run_Seq_Click(); });
    form.procedure("RunSequenceRange",
                   [this](int first, int last) { RunSequenceRange(first, last); });
    form.procedure(fmt::format("{}_Timer", parts.style.wait.timer), [this] { Timer1.disable(); });
    form.procedure("Cm_Stop_Loop_Click", [this] { parts_.variables.LoopStopRequest = true; });
    form.procedure("Ch_Loop_Click", [this] { Ch_Loop_Click(); });
    addLoopCaptions(form);
    parts_.start.setText(parts.style.loop.start);
    parts_.stop.setText(parts.style.loop.stop);
    Ch_Loop_Click();
    formGoing_ = form.set().formGoing.follow([this, &form](forms::Form& going) {
        if (&going == &form)
            abandon();
    });
}

void SequencePlayer::addLoopCaptions(forms::Form& form) {
    const auto add = [&form](std::optional<forms::Label>& label, const chips::ControlName& name,
                             const char* caption) {
        if (name.exists())
            label.emplace(form, name.name, caption,
                          name.index < 0 ? std::nullopt : std::optional(name.index));
    };
    add(loopStartCaption, parts_.style.loop.startLabel, "Start");
    add(loopStopCaption, parts_.style.loop.stopLabel, "Stop");
}

void SequencePlayer::Ch_Loop_Click() {
    const bool on = Ch_Loop.checked();
    for (std::optional<forms::Label>* caption : {&loopStartCaption, &loopStopCaption})
        if (*caption)
            (*caption)->setVisible(on);
    for (forms::Control* control :
         std::initializer_list<forms::Control*>{&parts_.start, &parts_.stop, &Cm_Stop_Loop})
        if (parts_.style.loop.hides)
            control->setVisible(on);
        else
            control->setEnabled(on);
}

void SequencePlayer::Cm_Run_Seq_Click() {
    if (!Cm_Run_Seq.enabled()) // it runs already
        return;
    const ButtonOff off(Cm_Run_Seq);
    Shown shown(*this);
    parts_.session.WordToSend.assign(
        static_cast<std::size_t>(std::max<int>(parts_.session.SPIWordLength, 0)), 0);
    if (parts_.style.loop.endsRun)
        parts_.variables.LoopStopRequest = false; // what stopped the last run is over
    parts_.lists.restart();
    stretches(parts_.lists.last());
}

void SequencePlayer::show(std::optional<std::int64_t> waitUntil,
                          SequenceProgress::Awaited awaited) {
    progress_->waitUntil = waitUntil;
    progress_->awaited = awaited;
    progressChanged.raise();
}

std::int64_t SequencePlayer::remainingWait() const {
    if (!progress_ || !progress_->waitUntil)
        return 0;
    return std::max<std::int64_t>(*progress_->waitUntil - parts_.clock.nanoseconds(), 0);
}

void SequencePlayer::RunSequenceRange(int first, int last) {
    Shown shown(*this);
    commands_->stretchBegins();
    for (int line = first; line <= last;) {
        progress_->line = line;
        if (parts_.trigger != nullptr) // the next frame takes it up
            parts_.session.USBFrameTopBit = val(parts_.trigger->text()) == line;
        parts_.lists.showPlayed(line);
        if (!parts_.variables.RunEnabled) {
            ++line;
            continue;
        }
        const std::string name = parts_.lists.command(line);
        const std::string value = parts_.lists.value(line);
        if (name == waitCommand) {
            wait(line, value);
            parts_.lists.addAnswer({});
        } else {
            parts_.lists.addAnswer(commands_->play(line, name, value));
        }
        line = nextLine(line, first, last);
        parts_.loop.turn();
    }
}

int SequencePlayer::nextLine(int line, int first, int last) {
    if (!Ch_Loop.checked())
        return line + 1;
    const double start = val(parts_.start.text());
    const double stop = val(parts_.stop.text());
    const bool loops = start >= first && stop <= last;
    const bool stopped = parts_.variables.LoopStopRequest;
    const bool repeats = loops && !stopped && line == stop;
    if (repeats) {
        parts_.lists.removeAnswers(toInt32(start), line);
        parts_.lists.goBack(line, parts_.stop.text(), toInt32(start));
    }
    parts_.loop.turn();
    if (loops && stopped && parts_.style.loop.endsRun)
        return last + 1;
    return repeats ? toInt32(start) : line + 1;
}

void SequencePlayer::wait(int line, const std::string& value) {
    const bool endless = parts_.style.wait.endless;
    const std::int32_t milliseconds =
        endless ? endlessOrLong(line, value) : toInt32(toNumber(value));
    if (milliseconds > 0)
        waitFor(milliseconds);
    else if (endless)
        waitForever();
}

std::int32_t SequencePlayer::endlessOrLong(int line, const std::string& value) const {
    try {
        return std::max(toInt32(val(value)), 0);
    } catch (const Failure& failure) {
        throw Failure(failure.kind(), fmt::format("Row {}: {}", line, failure.what()));
    }
}

void SequencePlayer::waitFor(std::int32_t milliseconds) {
    // A timer of a window may come late, and a timer that nothing drives never comes.
    const std::int64_t end = parts_.clock.nanoseconds() + milliseconds * millisecond;
    const Waiting waiting(*this, milliseconds, end);
    for (std::int64_t left = milliseconds * millisecond;
         left > 0 && Timer1.enabled() && parts_.variables.RunEnabled;
         left = end - parts_.clock.nanoseconds())
        parts_.loop.waitForEvents(left);
}

void SequencePlayer::waitForever() {
    constexpr std::int64_t longSleep = 3'600'000 * millisecond;
    const Waiting waiting(*this, 0, std::nullopt);
    while (Timer1.enabled() && parts_.variables.RunEnabled)
        parts_.loop.waitForEvents(longSleep);
}

} // namespace bitlux
