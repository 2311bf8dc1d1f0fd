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

/// Executes the lines of a sequence.
class SequenceCommands {
public:
    virtual ~SequenceCommands() = default;

    /// A stretch of lines begins.
    virtual void stretchBegins() {}
    /// Plays a line that is not a wait. Returns a text for each list of answers, none when the line
    /// has no answer. Raises Failure for an invalid line.
    virtual std::vector<std::string> play(int line, const std::string& name,
                                          const std::string& value) = 0;
};

/// Variables of a form that a run shares with its other parts.
struct SequenceVariables {
    bool LoopStopRequest = false;
    bool RunEnabled = true; ///< when cleared, the remaining lines pass without being played
};

/// Position of a run over a sequence.
struct SequenceProgress {
    enum class Awaited : std::uint8_t { Nothing, Reset, Interrupt };

    int line = 0;                          ///< the current or last line; 0 before the first
    int lines = 0;                         ///< their number at the start
    std::optional<std::int64_t> waitUntil; ///< on the clock, in nanoseconds, during a wait
    Awaited awaited = Awaited::Nothing;    ///< event of the chip for which the run has stopped
};

/// Plays a sequence from top to bottom, with a loop and waits. The event loop runs after each line,
/// so that the whole panel stays usable; a wait sleeps in it.
class SequencePlayer {
public:
    /// The dependencies; all outlive it.
    struct Parts {
        const chips::SequenceStyle& style;
        Session& session;
        FailureBoxes& failures;
        SequenceVariables& variables;
        SequenceLists& lists;
        forms::TextBox& start; ///< lines of the loop
        forms::TextBox& stop;
        forms::TextBox* trigger; ///< line at which the dongle outputs a pulse; null without one
        EventLoop& loop;
        const Clock& clock;
    };

    SequencePlayer(forms::Form& form, const Parts& parts);

    /// Executes the lines; to be set before the first run, and outlives the player.
    void setCommands(SequenceCommands& commands) { commands_ = &commands; }

    /// Plays all lines. An invalid line ends the run with Failure.
    void Cm_Run_Seq_Click();
    /// Plays the lines `first` to `last`.
    void RunSequenceRange(int first, int last);
    /// The remaining lines pass, and waits end. Unloading the form has the same effect.
    void abandon() { parts_.variables.RunEnabled = false; }

    /// Nothing while no run is active.
    [[nodiscard]] const std::optional<SequenceProgress>& progress() const { return progress_; }
    /// Remaining nanoseconds of the current wait, 0 without one.
    [[nodiscard]] std::int64_t remainingWait() const;
    /// Sets what a run waits for between two stretches.
    void await(SequenceProgress::Awaited awaited) { show({}, awaited); }
    /// A wait, a stop or the run began or ended. The arrow shows the begin of a line.
    Event<> progressChanged;

    /// Plays the whole sequence, line 1 to the given one; at first one stretch.
    std::function<void(int last)> stretches = [this](int last) { RunSequenceRange(1, last); };

private:
    class ButtonOff;
    class Shown;
    class Waiting;

    /// Changes the result of progress() for the current line.
    void show(std::optional<std::int64_t> waitUntil, SequenceProgress::Awaited awaited = {});

    void wait(int line, const std::string& value);
    /// Milliseconds; 0 for a wait without end.
    [[nodiscard]] std::int32_t endlessOrLong(int line, const std::string& value) const;
    void waitFor(std::int32_t milliseconds);
    void waitForever();
    /// The line that follows `line` in the loop.
    [[nodiscard]] int nextLine(int line, int first, int last);
    void Ch_Loop_Click();
    void addLoopCaptions(forms::Form& form);

    Parts parts_;
    SequenceCommands* commands_ = nullptr;
    std::optional<SequenceProgress> progress_;
    Subscription formGoing_;

public:
    forms::Button Cm_Run_Seq;
    forms::Timer Timer1; ///< runs during a wait; disabling it ends the wait
    forms::CheckBox Ch_Loop;
    std::optional<forms::Label> loopStartCaption; ///< if the chip's file has them
    std::optional<forms::Label> loopStopCaption;
    forms::Button Cm_Stop_Loop;
};

} // namespace bitlux
