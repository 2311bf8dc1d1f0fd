#pragma once

#include "panels/common/sequence_lists.h"
#include "platform/clock.h"
#include "platform/desk.h"
#include "platform/event.h"
#include "platform/forms/controls.h"
#include "platform/forms/form.h"
#include "platform/forms/timer.h"
#include "session/session.h"
#include "transfer/failure_boxes.h"

#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <vector>

namespace bitlux {

/// What the lines of a sequence do to a chip.
class SequenceCommands {
public:
    virtual ~SequenceCommands() = default;

    /// A stretch of lines begins.
    virtual void stretchBegins() {}
    /// Plays a line that is no wait. A text for each list of answers, none when the line has no
    /// answer. Raises Failure for a line that cannot be.
    virtual std::vector<std::string> play(int line, const std::string& name,
                                          const std::string& value) = 0;
};

/// Variables of a form that a run shares with its other parts.
struct SequenceVariables {
    bool LoopStopRequest = false;
    bool RunEnabled = true; ///< cleared, the lines that are left pass without being played
};

/// Where a run over a sequence is.
struct SequenceProgress {
    enum class Awaited : std::uint8_t { Nothing, Reset, Interrupt };

    int line = 0;  ///< that is played or was played last; 0 before the first
    int lines = 0; ///< as many as there were at the start
    std::optional<std::int64_t> waitUntil; ///< on the clock, in nanoseconds, during a wait
    Awaited awaited = Awaited::Nothing;    ///< of the chip, at a point where the run stops
};

/// Plays a sequence from top to bottom, with a loop and waits. The event loop turns after each
/// line, so that the whole panel works meanwhile; a wait sleeps in it.
class SequencePlayer {
public:
    /// What it works with; all outlive it.
    struct Parts {
        const chips::SequenceStyle& style;
        Session& session;
        FailureBoxes& failures;
        SequenceVariables& variables;
        SequenceLists& lists;
        forms::TextBox& start; ///< lines of the loop
        forms::TextBox& stop;
        forms::TextBox* trigger; ///< line at which the dongle gives a pulse; null without one
        EventLoop& loop;
        const Clock& clock;
    };

    SequencePlayer(forms::Form& form, const Parts& parts);

    /// What the lines do; to be told before the first run, and outlives the player.
    void setCommands(SequenceCommands& commands) { commands_ = &commands; }

    /// Plays all lines. One that cannot be ends the run with Failure.
    void Cm_Run_Seq_Click();
    /// Plays the lines `first` to `last`.
    void RunSequenceRange(int first, int last);
    /// Lines that are left pass, and waits end. A form that goes does so by itself.
    void abandon() { parts_.variables.RunEnabled = false; }

    /// Nothing while no run is on.
    [[nodiscard]] const std::optional<SequenceProgress>& progress() const { return progress_; }
    /// Nanoseconds that are left of the present wait, 0 without one.
    [[nodiscard]] std::int64_t remainingWait() const;
    /// Tells what a run stops for, between two stretches.
    void await(SequenceProgress::Awaited awaited) { show({}, awaited); }
    /// A wait, a stop or the run began or ended. That a line begins is told by the arrow.
    Event<> progressChanged;

    /// Plays the whole sequence, line 1 to the given one; at first one stretch.
    std::function<void(int last)> stretches = [this](int last) { RunSequenceRange(1, last); };

private:
    class ButtonOff;
    class Shown;
    class Waiting;

    /// Changes what progress() tells of the present line.
    void show(std::optional<std::int64_t> waitUntil, SequenceProgress::Awaited awaited = {});

    void wait(int line, const std::string& value);
    /// Milliseconds; 0 for a wait that has no end.
    [[nodiscard]] std::int32_t endlessOrLong(int line, const std::string& value) const;
    void waitFor(std::int32_t milliseconds);
    void waitForever();
    /// The line that follows `line`, as the loop tells.
    [[nodiscard]] int nextLine(int line, int first, int last);
    void Ch_Loop_Click();
    void addLoopCaptions(forms::Form& form);

    Parts parts_;
    SequenceCommands* commands_ = nullptr;
    std::optional<SequenceProgress> progress_;
    Subscription formGoing_;

public:
    forms::Button Cm_Run_Seq;
    forms::Timer Timer1; ///< runs for as long as a wait lasts; who disables it ends the wait
    forms::CheckBox Ch_Loop;
    std::optional<forms::Label> loopStartCaption; ///< where the chip's file wants them
    std::optional<forms::Label> loopStopCaption;
    forms::Button Cm_Stop_Loop;
};

} // namespace bitlux
