#include "panels/zt72518/sequencer.h"

#include "panels/zt72518/sequence_layout.h"

#include <memory>
#include <string>

namespace bitlux::zt72518 {

namespace {

constexpr int timeOfLine = 3; ///< list of wd_config

} // namespace

Sequencer::Sequencer(forms::Form& form, const Parts& parts)
    : Val_loop("Val_loop", LoopStart, TriggerLine,
               [&form](const std::string& name, int index) {
                   return std::make_unique<forms::TextBox>(form, name, index);
               }),
      lists(form, sequenceLayout),
      files(form, lists, parts.desk.fileDialogs),
      store(form, parts.variables, parts.desk),
      watchdog(form, {.session = parts.session,
                      .variables = parts.variables,
                      .link = parts.link,
                      .dongle = parts.dongle,
                      .sequence = lists,
                      .boxes = parts.desk.boxes}),
      commands({.session = parts.session,
                .variables = parts.variables,
                .link = parts.link,
                .words = parts.words,
                .decoder = parts.decoder,
                .watchdog = watchdog,
                .triggerLine = Val_loop(TriggerLine)}),
      editor(form, lists, parts.desk.boxes),
      player(form, {.session = parts.session,
                    .failures = parts.failures,
                    .variables = parts.variables,
                    .lists = lists,
                    .commands = commands,
                    .start = Val_loop(LoopStart),
                    .stop = Val_loop(LoopStop),
                    .loop = parts.desk.loop,
                    .clock = parts.clock}),
      stops(form, {.session = parts.session,
                   .variables = parts.variables,
                   .lists = lists,
                   .player = player,
                   .dongle = parts.dongle,
                   .loop = parts.desk.loop}),
      loopPick(form, {.variables = parts.variables,
                      .lists = lists,
                      .player = player,
                      .start = Val_loop(LoopStart),
                      .stop = Val_loop(LoopStop),
                      .startCaption = parts.startCaption,
                      .stopCaption = parts.stopCaption}),
      valueEditor(form, lists, Val_loop(EditedValue), watchdog.wd_config(timeOfLine)),
      autoReads(form, {.variables = parts.variables,
                       .controls = parts.controls,
                       .link = parts.link,
                       .dongle = parts.dongle,
                       .store = store}) {
    watchdog.changeValue = [this] { valueEditor.changeValue(); };
    watchdog.store = sinks().store;
}

CommandSinks Sequencer::sinks() {
    return {.append = [this](const std::string& command,
                             const std::string& value) { lists.append(command, value); },
            .store = [this](const std::string& command,
                            const std::string& value) { store.save_log(command, value); }};
}

} // namespace bitlux::zt72518
