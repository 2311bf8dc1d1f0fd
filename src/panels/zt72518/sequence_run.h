#pragma once

#include "panels/zt72518/chip_link.h"
#include "panels/zt72518/panel_variables.h"
#include "panels/zt72518/sequence_lists.h"
#include "panels/zt72518/watchdog.h"
#include "platform/clock.h"
#include "platform/desk.h"
#include "platform/event.h"
#include "platform/forms/control_array.h"
#include "platform/forms/controls.h"
#include "platform/forms/form.h"
#include "platform/forms/timer.h"
#include "session/session.h"
#include "transfer/dongle_link.h"

#include <cstdint>
#include <functional>
#include <optional>
#include <string>

namespace bitlux::zt72518 {

/// Where a run over the sequence is.
struct SequenceProgress {
    enum class Awaited : std::uint8_t { Nothing, Reset, Interrupt };

    int line = 0;  ///< that is played or was played last; 0 before the first
    int lines = 0; ///< as many as there were at the start
    std::optional<std::int64_t> waitUntil; ///< on the clock, in nanoseconds, during a wait
    Awaited awaited = Awaited::Nothing;    ///< of the chip, at a point where the run stops
};

/// Plays the sequence from top to bottom, with loops, waits, and two points at which it stops until
/// the chip resets or interrupts. The event loop turns after each line, so that the whole panel
/// works meanwhile; a wait sleeps in it.
class SequenceRun {
public:
    /// What it works with; all outlive it.
    struct Parts {
        Session& session;
        PanelVariables& variables;
        ChipLink& link;
        DongleLink& dongle;
        SequenceLists& lists;
        Watchdog& watchdog;
        const forms::ControlArray<forms::TextBox>& Val_loop;
        forms::Label& startPick; ///< shown while there is a loop
        forms::Label& stopPick;
        EventLoop& loop;
        const Clock& clock;
    };

    SequenceRun(forms::Form& form, const Parts& parts);

    /// Plays all lines. A line with a value that is none ends it with Failure.
    void Cm_Run_Seq_Click();
    /// Plays the lines `first` to `last`.
    void RunSequenceRange(int first, int last);
    /// Lines that are left pass without sending, and waits end. A form that goes does so by itself.
    void abandon() { variables_.RunEnabled = false; }

    /// Nothing while no run is on.
    [[nodiscard]] const std::optional<SequenceProgress>& progress() const { return progress_; }
    /// Nanoseconds that are left of the present wait, 0 without one.
    [[nodiscard]] std::int64_t remainingWait() const;
    /// A wait, a stop or the run began or ended. That a line begins is told by the arrow.
    Event<> progressChanged;

    // What the register pages give; set by whoever owns both.

    /// Decod_Name: sets SequenceHighByte, SequenceIsWrite and SequenceIsWatchdog.
    std::function<void(const std::string& name)> decodeName;
    /// HEXtoBIN
    std::function<std::string(const std::string& hexadecimal)> binaryText;
    /// ParityOfWordLow: sets ParityBit.
    std::function<void(std::uint8_t byte)> computeParity;

private:
    class ButtonOff;
    class Shown;

    /// A point at which a run stops.
    struct Condition {
        const forms::ControlArray<forms::OptionButton>& lines; ///< 0 reset, 1 interrupt
        bool& seen;
        const bool& pass;
    };

    /// Changes what progress() tells of the present line.
    void show(std::optional<std::int64_t> waitUntil, SequenceProgress::Awaited awaited = {});
    [[nodiscard]] int lineIn(const forms::TextBox& box) const;
    void await(const Condition& condition);
    void play(int line);
    void wait(const std::string& value);
    void enterSpecialMode(std::uint8_t choice);
    void sendCommand(const std::string& name, const std::string& value);
    [[nodiscard]] std::string answerText(std::uint8_t byte) const;
    /// The line that follows `line`, as the loop tells.
    [[nodiscard]] int nextLine(int line, int first, int last);
    void Ch_FirstCondition_Click();
    void Ch_SecondCondition_Click();
    void Ch_Loop_Click();

    Parts parts_;
    PanelVariables& variables_;
    SequenceLists& lists_;
    std::optional<SequenceProgress> progress_;
    Subscription formGoing_;

public:
    forms::Button Cm_Run_Seq;
    forms::Timer Timer1; ///< runs for as long as a wait lasts; who disables it ends the wait
    forms::CheckBox Ch_Loop;
    forms::Button Cm_Stop_Loop;
    forms::ControlArray<forms::Frame> frame_Condition;
    forms::CheckBox Ch_FirstCondition;
    forms::CheckBox Ch_SecondCondition;
    forms::TextBox Text_FirstCondition; ///< the last line before the run stops
    forms::TextBox Text_SecondCondition;
    forms::OptionGroup firstLines;
    forms::OptionGroup secondLines;
    forms::ControlArray<forms::OptionButton> R_Condition1; ///< 0 reset, 1 interrupt
    forms::ControlArray<forms::OptionButton> R_Condition2;
    forms::Button Cm_PassCondition1;
    forms::Button Cm_PassCondition2;
};

} // namespace bitlux::zt72518
