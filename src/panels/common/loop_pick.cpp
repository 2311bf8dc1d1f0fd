#include "panels/common/loop_pick.h"

#include "panels/common/colours.h"
#include "platform/conversions.h"

#include <string>
#include <utility>

namespace bitlux {

LoopPick::LoopPick(const PanelContext& context) : sequence_(context.sequence) {
    forms::Form& form = context.form;
    form.variable("NextLoopPick", NextLoopPick);
    showNext();
    form.procedure("List_Commands_Click", [this] { List_Commands_Click(); });
    form.procedure("Val_loop_Change", [this] { Val_loop_Change(); });
}

void LoopPick::List_Commands_Click() {
    if (sequence_.lists.List_Commands.listIndex() < 0)
        return;
    const std::string line = std::to_string(sequence_.lists.List_Commands.listIndex());
    const bool isStart = std::exchange(NextLoopPick, !NextLoopPick);
    showNext();
    sequence_.Val_loop(isStart ? PanelSequence::LoopStart : PanelSequence::LoopStop).setText(line);
}

void LoopPick::Val_loop_Change() {
    const forms::TextBox& start = sequence_.Val_loop(PanelSequence::LoopStart);
    forms::TextBox& stop = sequence_.Val_loop(PanelSequence::LoopStop);
    if (val(stop.text()) < val(start.text()))
        stop.setText(start.text());
}

void LoopPick::showNext() {
    const auto mark = [](std::optional<forms::Label>& caption, bool isNext) {
        if (caption)
            caption->setBackColor(isNext ? alarmColour : forms::buttonFaceColor);
    };
    mark(sequence_.player.loopStartCaption, NextLoopPick);
    mark(sequence_.player.loopStopCaption, !NextLoopPick);
}

} // namespace bitlux
