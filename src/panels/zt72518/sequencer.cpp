#include "panels/zt72518/sequencer.h"

namespace bitlux::zt72518 {

Sequencer::Sequencer(forms::Form& form, const Parts& parts)
    : lists(form),
      files(form, lists, parts.desk.fileDialogs),
      store(form, parts.variables, parts.desk),
      watchdog(form, {.session = parts.session,
                      .variables = parts.variables,
                      .link = parts.link,
                      .dongle = parts.dongle,
                      .sequence = lists,
                      .boxes = parts.desk.boxes}),
      editor(form, {.variables = parts.variables,
                    .lists = lists,
                    .timeOfLine = watchdog.wd_config(3),
                    .startPick = parts.startPick,
                    .stopPick = parts.stopPick,
                    .boxes = parts.desk.boxes}),
      run(form, {.session = parts.session,
                 .variables = parts.variables,
                 .link = parts.link,
                 .dongle = parts.dongle,
                 .lists = lists,
                 .watchdog = watchdog,
                 .Val_loop = editor.Val_loop,
                 .startPick = parts.startPick,
                 .stopPick = parts.stopPick,
                 .loop = parts.desk.loop,
                 .clock = parts.clock}),
      autoReads(form, {.session = parts.session,
                       .variables = parts.variables,
                       .dongle = parts.dongle,
                       .store = store}) {
    watchdog.changeValue = [this] { editor.changeValue(); };
    watchdog.store = sinks().store;
}

CommandSinks Sequencer::sinks() {
    return {.append = [this](const std::string& command,
                             const std::string& value) { lists.append(command, value); },
            .store = [this](const std::string& command,
                            const std::string& value) { store.save_log(command, value); }};
}

} // namespace bitlux::zt72518
