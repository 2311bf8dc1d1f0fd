#include "panels/common/sequence_stops.h"

#include "platform/conversions.h"
#include "platform/event.h"

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <memory>

namespace bitlux {

namespace {

constexpr std::int64_t pauseWithoutDongle = 10'000'000; // ns

forms::ControlArray<forms::OptionButton> lineOptions(forms::Form& form, forms::OptionGroup& group,
                                                     const char* name,
                                                     const std::vector<std::string>& events) {
    forms::ControlArray<forms::OptionButton> options(
        name, 0, 1, [&](const std::string& arrayName, int index) {
            return std::make_unique<forms::OptionButton>(
                form, group, arrayName, events.at(static_cast<std::size_t>(index)), index);
        });
    options(0).setValue(true);
    return options;
}

/// The line in a box, from 0 to `last`.
int lineIn(const forms::TextBox& box, int last) {
    return static_cast<int>(
        std::nearbyint(std::clamp<double>(val(box.text()), 0, std::max(last, 0))));
}

} // namespace

SequenceStops::SequenceStops(const PanelContext& context)
    : session_(context.outside.session),
      dongle_(context.outside.dongle),
      loop_(context.outside.desk.loop),
      sequence_(context.sequence),
      frame_Condition(context.form, "frame_Condition", 2),
      Ch_FirstCondition(context.form, "Ch_FirstCondition",
                        context.chip.sequence.stops.boxes.front()),
      Ch_SecondCondition(context.form, "Ch_SecondCondition",
                         context.chip.sequence.stops.boxes.back()),
      Text_FirstCondition(context.form, "Text_FirstCondition"),
      Text_SecondCondition(context.form, "Text_SecondCondition"),
      R_Condition1(lineOptions(context.form, firstLines, "R_Condition1",
                               context.chip.sequence.stops.events)),
      R_Condition2(lineOptions(context.form, secondLines, "R_Condition2",
                               context.chip.sequence.stops.events)),
      Cm_PassCondition1(context.form, "Cm_PassCondition1", "Pass"),
      Cm_PassCondition2(context.form, "Cm_PassCondition2", "Pass") {
    const chips::SequenceStyle::Stops& style = context.chip.sequence.stops;
    for (int frame = 0; frame <= frame_Condition.last(); ++frame)
        frame_Condition(frame).setCaption(style.frames.at(static_cast<std::size_t>(frame)));
    if (style.acts)
        act(context.form);
}

void SequenceStops::act(forms::Form& form) {
    form.variable("Pass1", Pass1);
    form.variable("Pass2", Pass2);
    form.variable("Condition1Seen", Condition1Seen);
    form.variable("Condition2Seen", Condition2Seen);
    form.procedure("Cm_PassCondition1_Click", [this] { Pass1 = true; });
    form.procedure("Cm_PassCondition2_Click", [this] { Pass2 = true; });
    form.procedure("Ch_FirstCondition_Click", [this] { Ch_FirstCondition_Click(); });
    form.procedure("Ch_SecondCondition_Click", [this] { Ch_SecondCondition_Click(); });
    Ch_FirstCondition_Click();
    Ch_SecondCondition_Click();
    sequence_.player.stretches = [this](int last) { play(last); };
}

void SequenceStops::Ch_FirstCondition_Click() {
    const bool on = Ch_FirstCondition.checked();
    Text_FirstCondition.setVisible(on);
    R_Condition1(0).setVisible(on);
    R_Condition1(1).setVisible(on);
    frame_Condition(1).setVisible(on);
}

void SequenceStops::Ch_SecondCondition_Click() {
    R_Condition2(0).setVisible(Ch_SecondCondition.checked());
    R_Condition2(1).setVisible(Ch_SecondCondition.checked());
}

void SequenceStops::play(int last) {
    int first = 1;
    if (Ch_FirstCondition.checked()) {
        const int stop = lineIn(Text_FirstCondition, last);
        sequence_.player.RunSequenceRange(first, stop);
        await({R_Condition1, Condition1Seen, Pass1});
        first = stop + 1;
        if (Ch_SecondCondition.checked()) {
            const int second = lineIn(Text_SecondCondition, last);
            sequence_.player.RunSequenceRange(first, second);
            await({R_Condition2, Condition2Seen, Pass2});
            first = second + 1;
        }
    }
    sequence_.player.RunSequenceRange(first, last);
}

bool SequenceStops::sample() const {
    bool answered = true;
    const Subscription watch = dongle_.failed.follow([&answered] { answered = false; });
    dongle_.read_rstint();
    return answered;
}

void SequenceStops::await(const Condition& condition) {
    sequence_.player.await(condition.lines(0).value() ? SequenceProgress::Awaited::Reset
                                                      : SequenceProgress::Awaited::Interrupt);
    bool lost = false; // the user is notified once, not at each sample
    while (!condition.seen && !condition.pass && sequence_.variables.RunEnabled) {
        lost = lost ? session_.LinkFailed : !sample();
        if (condition.lines(0).value() ? session_.ResetSeen : session_.InterruptSeen)
            condition.seen = true;
        if (session_.USBReady && !lost) // a sample takes its time
            loop_.turn();
        else
            loop_.waitForEvents(pauseWithoutDongle);
    }
    condition.seen = false;
    sequence_.player.await(SequenceProgress::Awaited::Nothing);
}

} // namespace bitlux
