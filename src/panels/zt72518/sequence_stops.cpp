#include "panels/zt72518/sequence_stops.h"

#include "platform/conversions.h"
#include "platform/event.h"

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <memory>

namespace bitlux::zt72518 {

namespace {

constexpr std::int64_t pauseWithoutDongle = 10'000'000; // ns

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

/// The line that a box tells, from 0 to `last`.
int lineIn(const forms::TextBox& box, int last) {
    return static_cast<int>(
        std::nearbyint(std::clamp<double>(val(box.text()), 0, std::max(last, 0))));
}

} // namespace

SequenceStops::SequenceStops(forms::Form& form, const Parts& parts)
    : parts_(parts),
      variables_(parts.variables),
      frame_Condition(form, "frame_Condition", 2),
      Ch_FirstCondition(form, "Ch_FirstCondition", "First condition"),
      Ch_SecondCondition(form, "Ch_SecondCondition", "Second condition"),
      Text_FirstCondition(form, "Text_FirstCondition"),
      Text_SecondCondition(form, "Text_SecondCondition"),
      R_Condition1(lineOptions(form, firstLines, "R_Condition1")),
      R_Condition2(lineOptions(form, secondLines, "R_Condition2")),
      Cm_PassCondition1(form, "Cm_PassCondition1", "Pass"),
      Cm_PassCondition2(form, "Cm_PassCondition2", "Pass") {
    form.procedure("Cm_PassCondition1_Click", [this] { variables_.Pass1 = true; });
    form.procedure("Cm_PassCondition2_Click", [this] { variables_.Pass2 = true; });
    form.procedure("Ch_FirstCondition_Click", [this] { Ch_FirstCondition_Click(); });
    form.procedure("Ch_SecondCondition_Click", [this] { Ch_SecondCondition_Click(); });
    Ch_FirstCondition_Click();
    Ch_SecondCondition_Click();
    parts_.player.stretches = [this](int last) { play(last); };
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
        parts_.player.RunSequenceRange(first, stop);
        await({R_Condition1, variables_.Condition1Seen, variables_.Pass1});
        first = stop + 1;
        if (Ch_SecondCondition.checked()) {
            const int second = lineIn(Text_SecondCondition, last);
            parts_.player.RunSequenceRange(first, second);
            await({R_Condition2, variables_.Condition2Seen, variables_.Pass2});
            first = second + 1;
        }
    }
    parts_.player.RunSequenceRange(first, last);
}

bool SequenceStops::sample() const {
    bool answered = true;
    const Subscription watch = parts_.dongle.failed.follow([&answered] { answered = false; });
    parts_.dongle.read_rstint();
    return answered;
}

void SequenceStops::await(const Condition& condition) {
    const Session& session = parts_.session;
    parts_.player.await(condition.lines(0).value() ? SequenceProgress::Awaited::Reset
                                                   : SequenceProgress::Awaited::Interrupt);
    bool lost = false; // who is told once need not be told at each sample
    while (!condition.seen && !condition.pass && variables_.RunEnabled) {
        lost = lost ? session.LinkFailed : !sample();
        if (condition.lines(0).value() ? session.ResetSeen : session.InterruptSeen)
            condition.seen = true;
        if (session.USBReady && !lost) // a sample takes its time
            parts_.loop.turn();
        else
            parts_.loop.waitForEvents(pauseWithoutDongle);
    }
    condition.seen = false;
    parts_.player.await(SequenceProgress::Awaited::Nothing);
}

} // namespace bitlux::zt72518
