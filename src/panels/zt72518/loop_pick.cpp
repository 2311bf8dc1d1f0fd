#include "panels/zt72518/loop_pick.h"

#include "panels/common/colours.h"
#include "platform/conversions.h"

#include <string>
#include <utility>

namespace bitlux::zt72518 {

LoopPick::LoopPick(forms::Form& form, const Parts& parts) : parts_(parts) {
    showNext();
    show(parts_.player.Ch_Loop.checked());
    parts_.player.loopChosen = [this](bool on) { show(on); };
    form.procedure("List_Commands_Click", [this] { List_Commands_Click(); });
    form.procedure("Val_loop_Change", [this] { Val_loop_Change(); });
}

void LoopPick::List_Commands_Click() {
    if (parts_.lists.List_Commands.listIndex() < 0)
        return;
    const std::string line = std::to_string(parts_.lists.List_Commands.listIndex());
    bool& picksStart = parts_.variables.NextLoopPick;
    const bool isStart = std::exchange(picksStart, !picksStart);
    showNext();
    (isStart ? parts_.start : parts_.stop).setText(line);
}

void LoopPick::Val_loop_Change() {
    if (val(parts_.stop.text()) < val(parts_.start.text()))
        parts_.stop.setText(parts_.start.text());
}

void LoopPick::showNext() {
    const bool picksStart = parts_.variables.NextLoopPick;
    parts_.startCaption.setBackColor(picksStart ? alarmColour : forms::buttonFaceColor);
    parts_.stopCaption.setBackColor(picksStart ? forms::buttonFaceColor : alarmColour);
}

void LoopPick::show(bool on) {
    parts_.startCaption.setVisible(on);
    parts_.stopCaption.setVisible(on);
}

} // namespace bitlux::zt72518
