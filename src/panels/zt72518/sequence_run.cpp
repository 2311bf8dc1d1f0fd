#include "panels/zt72518/sequence_run.h"

#include "platform/conversions.h"
#include "platform/failure.h"
#include "platform/forms/form_set.h"
#include "platform/printable.h"

#include <algorithm>
#include <cmath>
#include <memory>
#include <optional>

#include <fmt/format.h>

namespace bitlux::zt72518 {

namespace {

constexpr std::int64_t millisecond = 1'000'000;
constexpr std::int64_t pauseWithoutDongle = 10 * millisecond;

constexpr std::uint8_t specialModeRead = 18;
constexpr std::uint8_t specialModeWrite = 82;
constexpr int randomBits = 6;
constexpr int parityOption = 6; ///< bit of Init Misc

/// The byte that a value in hexadecimal tells, 0 for none.
std::uint8_t byteIn(const std::string& value) {
    unsigned byte = 0;
    for (const char character : value) {
        if (character == ' ')
            continue;
        const int digit = hexDigit(character);
        if (digit < 0)
            throw Failure(
                Failure::Kind::Conversion,
                fmt::format("The value \"{}\" is no hexadecimal number", printable(value, 40)));
        byte = 16 * byte + static_cast<unsigned>(digit);
        if (byte > 0xFF)
            throw Failure(
                Failure::Kind::Overflow,
                fmt::format("The value \"{}\" is more than a byte", printable(value, 40)));
    }
    return static_cast<std::uint8_t>(byte);
}

forms::ControlArray<forms::OptionButton> lineOptions(forms::Form& form, forms::OptionGroup& group,
                                                     const char* name) {
    forms::ControlArray<forms::OptionButton> options(
        name, 0, 1, [&](const std::string& arrayName, int index) {
            return std::make_unique<forms::OptionButton>(form, group, arrayName,
                                                         index == 0 ? "Reset" : "Interrupt", index);
        });
    options(0).setValue(true);
    return options;
}

} // namespace

/// The run button is disabled for as long as this lives.
class SequenceRun::ButtonOff {
public:
    explicit ButtonOff(forms::Button& button) : button_(button) { button_.disable(); }
    ~ButtonOff() { button_.enable(); }
    ButtonOff(const ButtonOff&) = delete;
    ButtonOff& operator=(const ButtonOff&) = delete;

private:
    forms::Button& button_;
};

/// There is progress for as long as the outermost of these lives.
class SequenceRun::Shown {
public:
    explicit Shown(SequenceRun& run) : run_(run), isOutermost_(!run.progress_) {
        if (isOutermost_)
            run_.progress_ = {.lines = run.lists_.last(), .waitUntil = {}};
    }
    ~Shown() {
        if (!isOutermost_)
            return;
        run_.progress_.reset();
        run_.progressChanged.raise();
    }
    Shown(const Shown&) = delete;
    Shown& operator=(const Shown&) = delete;

private:
    SequenceRun& run_;
    bool isOutermost_;
};

SequenceRun::SequenceRun(forms::Form& form, const Parts& parts)
    : parts_(parts),
      variables_(parts.variables),
      lists_(parts.lists),
      Cm_Run_Seq(form, "Cm_Run_Seq", "RUN"),
      Timer1(form, "Timer1", 0),
      Ch_Loop(form, "Ch_Loop", "Loop"),
      Cm_Stop_Loop(form, "Cm_Stop_Loop", "Stop Loop"),
      frame_Condition(form, "frame_Condition", 2),
      Ch_FirstCondition(form, "Ch_FirstCondition", "First condition"),
      Ch_SecondCondition(form, "Ch_SecondCondition", "Second condition"),
      Text_FirstCondition(form, "Text_FirstCondition"),
      Text_SecondCondition(form, "Text_SecondCondition"),
      R_Condition1(lineOptions(form, firstLines, "R_Condition1")),
      R_Condition2(lineOptions(form, secondLines, "R_Condition2")),
      Cm_PassCondition1(form, "Cm_PassCondition1", "Pass"),
      Cm_PassCondition2(form, "Cm_PassCondition2", "Pass") {
    form.procedure("Cm_Run_Seq_Click", [this] { Cm_Run_Seq_Click(); });
    form.procedure("RunSequenceRange",
                   [this](int first, int last) { RunSequenceRange(first, last); });
    form.procedure("Timer1_Timer", [this] { Timer1.disable(); });
    form.procedure("Cm_Stop_Loop_Click", [this] { variables_.LoopStopRequest = true; });
    form.procedure("Cm_PassCondition1_Click", [this] { variables_.Pass1 = true; });
    form.procedure("Cm_PassCondition2_Click", [this] { variables_.Pass2 = true; });
    form.procedure("Ch_FirstCondition_Click", [this] { Ch_FirstCondition_Click(); });
    form.procedure("Ch_SecondCondition_Click", [this] { Ch_SecondCondition_Click(); });
    form.procedure("Ch_Loop_Click", [this] { Ch_Loop_Click(); });
    Ch_FirstCondition_Click();
    Ch_SecondCondition_Click();
    Ch_Loop_Click();
    formGoing_ = form.set().formGoing.follow([this, &form](forms::Form& going) {
        if (&going == &form)
            abandon();
    });
}

void SequenceRun::Ch_FirstCondition_Click() {
    const bool on = Ch_FirstCondition.checked();
    Text_FirstCondition.setVisible(on);
    R_Condition1(0).setVisible(on);
    R_Condition1(1).setVisible(on);
    frame_Condition(1).setVisible(on);
}

void SequenceRun::Ch_SecondCondition_Click() {
    R_Condition2(0).setVisible(Ch_SecondCondition.checked());
    R_Condition2(1).setVisible(Ch_SecondCondition.checked());
}

void SequenceRun::Ch_Loop_Click() {
    const bool on = Ch_Loop.checked();
    parts_.Val_loop(0).setEnabled(on);
    parts_.Val_loop(1).setEnabled(on);
    Cm_Stop_Loop.setEnabled(on);
    parts_.startPick.setVisible(on);
    parts_.stopPick.setVisible(on);
}

void SequenceRun::Cm_Run_Seq_Click() {
    const ButtonOff off(Cm_Run_Seq);
    const Shown shown(*this);
    parts_.session.WordToSend.assign(
        static_cast<std::size_t>(std::max<int>(parts_.session.SPIWordLength, 0)), 0);
    lists_.restart();
    const int last = lists_.last();
    int first = 1;
    if (Ch_FirstCondition.checked()) {
        const int stop = lineIn(Text_FirstCondition);
        RunSequenceRange(first, stop);
        await({R_Condition1, variables_.Condition1Seen, variables_.Pass1});
        first = stop + 1;
    }
    if (Ch_FirstCondition.checked() && Ch_SecondCondition.checked()) {
        const int stop = lineIn(Text_SecondCondition);
        RunSequenceRange(first, stop);
        await({R_Condition2, variables_.Condition2Seen, variables_.Pass2});
        first = stop + 1;
    }
    RunSequenceRange(first, last);
}

int SequenceRun::lineIn(const forms::TextBox& box) const {
    return static_cast<int>(
        std::nearbyint(std::clamp<double>(val(box.text()), 0, std::max(lists_.last(), 0))));
}

void SequenceRun::await(const Condition& condition) {
    bool lost = false; // who is told once need not be told at each sample
    const Subscription watch = parts_.dongle.failed.follow([&lost] { lost = true; });
    show({}, condition.lines(0).value() ? SequenceProgress::Awaited::Reset
                                        : SequenceProgress::Awaited::Interrupt);
    while (!condition.seen && !condition.pass && variables_.RunEnabled) {
        if (!lost)
            parts_.dongle.read_rstint();
        const Session& session = parts_.session;
        if (condition.lines(0).value() ? session.ResetSeen : session.InterruptSeen)
            condition.seen = true;
        if (session.USBReady && !lost) // a sample takes its time
            parts_.loop.turn();
        else
            parts_.loop.waitForEvents(pauseWithoutDongle);
    }
    condition.seen = false;
    show({});
}

void SequenceRun::show(std::optional<std::int64_t> waitUntil, SequenceProgress::Awaited awaited) {
    progress_->waitUntil = waitUntil;
    progress_->awaited = awaited;
    progressChanged.raise();
}

std::int64_t SequenceRun::remainingWait() const {
    if (!progress_ || !progress_->waitUntil)
        return 0;
    return std::max<std::int64_t>(*progress_->waitUntil - parts_.clock.nanoseconds(), 0);
}

void SequenceRun::RunSequenceRange(int first, int last) {
    variables_.SPIParityEnabled = false;
    const Shown shown(*this);
    for (int line = first; line <= last;) {
        progress_->line = line;
        parts_.session.USBFrameTopBit = val(parts_.Val_loop(3).text()) == line;
        lists_.pointTo(line + 1);
        if (!variables_.RunEnabled) {
            ++line;
            continue;
        }
        play(line);
        line = nextLine(line, first, last);
        parts_.loop.turn();
    }
}

int SequenceRun::nextLine(int line, int first, int last) {
    if (!Ch_Loop.checked())
        return line + 1;
    const double start = val(parts_.Val_loop(0).text());
    const double stop = val(parts_.Val_loop(1).text());
    const bool repeats =
        start >= first && stop <= last && !variables_.LoopStopRequest && line == stop;
    if (repeats)
        lists_.removeAnswers(toInt32(start), line);
    parts_.loop.turn();
    return repeats ? toInt32(start) : line + 1;
}

void SequenceRun::play(int line) {
    const std::string name = lists_.command(line);
    const std::string value = lists_.value(line);
    if (name == "Init Misc Write")
        variables_.SPIParityEnabled = ((byteIn(value) >> parityOption) & 1) != 0;
    if (name == "Wait")
        wait(value);
    else if (name == "Special Mode")
        enterSpecialMode(byteIn(value));
    else if (const std::optional<int> mode = Watchdog::modeNumber(name))
        parts_.watchdog.startBySequence(*mode, line);
    else
        return sendCommand(name, value);
    lists_.addAnswer();
}

void SequenceRun::wait(const std::string& value) {
    const std::int32_t milliseconds = toInt32(toNumber(value));
    if (milliseconds <= 0) // such a timer would never be over
        return;
    Timer1.setInterval(milliseconds);
    Timer1.enable();
    // A timer of a window may come late, and one that nobody drives never.
    const std::int64_t end = parts_.clock.nanoseconds() + milliseconds * millisecond;
    show(end);
    for (std::int64_t left = milliseconds * millisecond;
         left > 0 && Timer1.enabled() && variables_.RunEnabled;
         left = end - parts_.clock.nanoseconds())
        parts_.loop.waitForEvents(left);
    show({});
    Timer1.disable();
}

void SequenceRun::enterSpecialMode(std::uint8_t choice) {
    if (choice > 3)
        throw Failure(Failure::Kind::OutOfRange,
                      fmt::format("There is no Special Mode {}", choice));
    parts_.link.send(static_cast<std::uint8_t>(specialModeRead + variables_.ReadBit), 0);
    constexpr unsigned allRandomBits = (1U << randomBits) - 1;
    const unsigned inverse = allRandomBits & ~static_cast<unsigned>(parts_.link.replyLow());
    parts_.link.send(specialModeWrite, static_cast<std::uint8_t>((choice << randomBits) + inverse));
}

void SequenceRun::sendCommand(const std::string& name, const std::string& value) {
    decodeName(name);
    if (variables_.SequenceIsWatchdog)
        return lists_.addAnswer();
    variables_.WordLowByte = byteIn(value);
    if (variables_.SequenceIsWrite && variables_.SPIParityEnabled)
        computeParity(variables_.WordLowByte);
    parts_.link.send(variables_.SequenceHighByte, variables_.WordLowByte);
    lists_.addAnswer(answerText(parts_.link.replyHigh()), answerText(parts_.link.replyLow()));
}

std::string SequenceRun::answerText(std::uint8_t byte) const {
    const std::string digits = hex(byte);
    return fmt::format("{}{}  ({})", byte < 16 ? " 0000 " : "", binaryText(digits), digits);
}

} // namespace bitlux::zt72518
