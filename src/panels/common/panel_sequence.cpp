#include "panels/common/panel_sequence.h"

#include <memory>
#include <string>

namespace bitlux {

PanelSequence::PanelSequence(forms::Form& form, const chips::Chip& chip, PanelWords& words,
                             const PanelSurroundings& outside)
    : index_(chip),
      commands(index_, words),
      Val_loop("Val_loop", LoopStart, chip.sequence.boxes - 1,
               [&form](const std::string& name, int element) {
                   return std::make_unique<forms::TextBox>(form, name, element);
               }),
      lists(form, chip.sequence),
      files(form, chip.sequence, lists, outside.desk.fileDialogs),
      editor(form, chip.sequence, lists, outside.desk.boxes),
      player(form, {.style = chip.sequence,
                    .session = outside.session,
                    .failures = outside.engine.failures(),
                    .variables = variables,
                    .lists = lists,
                    .start = Val_loop(LoopStart),
                    .stop = Val_loop(LoopStop),
                    .trigger = chip.sequence.trigger.exists() ? &Val_loop(chip.sequence.trigger.box)
                                                              : nullptr,
                    .loop = outside.desk.loop,
                    .clock = outside.clock}) {
    player.setCommands(commands);
    form.variable("LoopStopRequest", variables.LoopStopRequest);
    form.variable("RunEnabled", variables.RunEnabled);
}

} // namespace bitlux
