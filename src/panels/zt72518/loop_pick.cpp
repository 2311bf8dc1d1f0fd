#include "panels/zt72518/loop_pick.h"

#include "panels/common/colours.h"
#include "panels/zt72518/last_word_labels.h"
#include "platform/conversions.h"

#include <string>
#include <utility>

namespace bitlux::zt72518 {

LoopPick::LoopPick(const PanelContext& context)
    : sequence_(context.sequence),
      startCaption_(context.controls.get<forms::Label>(LastWordLabels::loopStart)),
      stopCaption_(context.controls.get<forms::Label>(LastWordLabels::loopStop)) {
    forms::Form& form = context.form;
    form.variable("NextLoopPick", NextLoopPick);
    showNext();
    show(sequence_.player.Ch_Loop.checked());
    sequence_.player.loopChosen = [this](bool on) { show(on); };
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
    startCaption_.setBackColor(NextLoopPick ? alarmColour : forms::buttonFaceColor);
    stopCaption_.setBackColor(NextLoopPick ? forms::buttonFaceColor : alarmColour);
}

void LoopPick::show(bool on) {
    startCaption_.setVisible(on);
    stopCaption_.setVisible(on);
}

} // namespace bitlux::zt72518
