#pragma once

#include "platform/clock.h"
#include "platform/desk.h"
#include "platform/event.h"
#include "platform/forms/form.h"
#include "sending/command_line.h"
#include "sending/command_lists.h"
#include "sending/extra_pin_rows.h"
#include "sending/run_controls.h"
#include "sending/session_log.h"
#include "session/session.h"
#include "transfer/word_engine.h"

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>

namespace bitlux {

/// Position of a run over the commands to send.
struct RunProgress {
    std::size_t line = 0;                  ///< the current line, from 0
    std::size_t lines = 0;                 ///< their number at the start
    int pass = 0;                          ///< from 1
    std::optional<std::int64_t> waitUntil; ///< on the clock, in nanoseconds, during a wait
};

/// Plays the commands to send, from top to bottom.
class MultipleRun {
public:
    /// The dependencies of the run; all outlive it.
    struct Parts {
        Session& session;
        WordEngine& engine;
        CommandLists& commands;
        SessionLog& log;
        RunControls& run;
        ExtraPinRows& extraPins;
        MessageBoxes& boxes;
        EventLoop& loop;
        const Clock& clock;
    };

    /// The title of the box of a pause; no other box has it.
    static constexpr const char* pausedTitle = "SPI Transfers Paused";

    MultipleRun(forms::Form& form, const Parts& parts);

    /// Plays the list once. Words are sent one after the other; events are delivered only in waits
    /// and pauses, so Stop, Cancel and Abort take effect there. A stopped wait ends, and the lines
    /// after it are still played; an aborted run ends at its current line. Lines that were removed
    /// meanwhile raise Failure (OutOfRange).
    void DoSPIMultiple();

    /// Nothing while no run is active.
    [[nodiscard]] const std::optional<RunProgress>& progress() const { return progress_; }
    /// Remaining nanoseconds of the current wait, 0 without one.
    [[nodiscard]] std::int64_t remainingWait() const;
    /// A line, a wait or the run began or ended.
    Event<> progressChanged;
    /// A line names a Quick Command that has no word, which ends the run.
    Event<const std::string&> wordMissing;
    /// A line, counted from 0, sets an extra pin of this name, and there is none; the run goes on.
    Event<std::size_t, const std::string&> pinMissing;

    /// Ends a run at its current line, including its wait; for the end of the program.
    void abandon() { abandoned_ = true; }

private:
    class Shown;

    [[nodiscard]] bool hasEnded() const { return abandoned_ || parts_.run.aborted(); }
    /// False when the run ends with this line.
    bool play(const std::string& line, PlaceInPass place);
    bool send(const std::string& name, PlaceInPass place);
    bool pause();
    bool wait(std::string_view number, std::string_view unit);
    void passTime(std::int64_t nanoseconds);
    void setPins(const CommandTokens& tokens);
    void setPin(forms::OptionButton& option, const CommandTokens& tokens, const char* already);
    /// Shows a message and ends a continuous run; false.
    bool refuse(const std::string& text);

    Parts parts_;
    Session& session_;
    std::optional<RunProgress> progress_;
    bool abandoned_ = false;
};

} // namespace bitlux
