#include "panels/common/auto_reads.h"

#include "panels/common/command_store.h"
#include "platform/scoped_value.h"

#include <algorithm>
#include <memory>

#include <fmt/format.h>

namespace bitlux {

namespace {

bool isOneOf(const std::vector<int>& boxes, int box) {
    return std::find(boxes.begin(), boxes.end(), box) != boxes.end();
}

/// What a button of the pages reads; empty for one that reads nothing.
std::string titleOf(const chips::Chip& chip, const chips::ControlName& button) {
    for (const chips::Register& any : chip.registers)
        for (const chips::View& view : any.views)
            if (view.button == button)
                return view.operation == chips::Operation::Flags
                           ? view.title
                           : any.title + (view.extra != 0 ? " high" : "");
    for (const chips::Command& any : chip.commands)
        if (any.button == button)
            return any.title;
    return {};
}

} // namespace

AutoReads::AutoReads(const PanelContext& context)
    : style_(context.chip.automaticReads),
      controls_(context.controls),
      session_(context.outside.session),
      store_(style_.recorders.empty() ? nullptr : &context.part<CommandStore>()),
      boxes(style_.array, 0, style_.last(),
            [this, &context](const std::string& name, int box) {
                return std::make_unique<forms::CheckBox>(context.form, name,
                                                         captionOf(context.chip, box), box);
            }),
      timer(context.form, style_.timer, style_.interval) {
    for (const chips::AutomaticReads::Note& note : style_.notes)
        boxes(note.box).setTooltip(note.text);
    addProcedures(context.form);
    if (store_ != nullptr)
        store_->stopped = [this] { showRecording(); };
    linkFailed_ = context.outside.dongle.failed.follow([this] { giveUp(); });
}

void AutoReads::addProcedures(forms::Form& form) {
    form.procedure(style_.array + "_Click", [this](int box) { clicked(box); });
    form.procedure(style_.timer + "_Timer", [this] { readAll(); });
}

std::string AutoReads::captionOf(const chips::Chip& chip, int box) const {
    if (isOneOf(style_.switches, box))
        return "Auto reading";
    if (isOneOf(style_.recorders, box))
        return "Store commands in file";
    for (const chips::AutomaticReads::Group& group : style_.groups)
        if (group.box == box)
            return group.title;
    const auto place = static_cast<std::size_t>(box);
    return place < style_.buttons.size() ? titleOf(chip, style_.buttons[place]) : std::string();
}

std::vector<int> AutoReads::boxesOf(std::size_t group) const {
    const auto firstAfter = [this](std::size_t wanted) {
        return wanted < style_.groups.size() ? style_.groups[wanted].ticks.highest() + 1
                                             : static_cast<int>(style_.buttons.size());
    };
    const bool isLast = group + 1 >= style_.groups.size();
    std::vector<int> shown;
    for (int box = group == 0 ? 0 : firstAfter(group - 1);
         box < (isLast ? static_cast<int>(style_.buttons.size()) : firstAfter(group)); ++box)
        if (style_.buttons.at(static_cast<std::size_t>(box)).exists())
            shown.push_back(box);
    return shown;
}

void AutoReads::clicked(int box) {
    if (adjusting_)
        return;
    if (isOneOf(style_.switches, box))
        return switchAll(box);
    if (isOneOf(style_.recorders, box))
        return record(boxes(box).checked());
    for (const chips::AutomaticReads::Group& group : style_.groups)
        if (group.box == box)
            tickGroup(group);
}

/// Of several switches the last one follows the first alone.
void AutoReads::switchAll(int box) {
    const ScopedValue adjusting(adjusting_, true);
    const bool on = boxes(box).checked();
    timer.setEnabled(on);
    for (const int other : style_.switches)
        if (!on || other != style_.switches.back() || box == style_.switches.front())
            boxes(other).setValue(on ? 1 : 0);
}

void AutoReads::tick(const chips::BitList& list, bool on) {
    for (int k = 0; k < list.size(); ++k)
        boxes(list.at(k)).setValue(on ? 1 : 0);
}

void AutoReads::tickGroup(const chips::AutomaticReads::Group& group) {
    tick(group.ticks, boxes(group.box).checked());
    tick(group.clears, false);
}

void AutoReads::record(bool on) {
    try {
        if (on)
            store_->start();
        else
            store_->stop();
    } catch (...) {
        showRecording();
        throw;
    }
    showRecording();
}

void AutoReads::showRecording() {
    const ScopedValue adjusting(adjusting_, true);
    for (const int box : style_.recorders)
        boxes(box).setValue(store_->StoreCommands ? 1 : 0);
}

void AutoReads::readAll() {
    if (session_.LinkFailed)
        return switchOff();
    for (std::size_t box = 0; box < style_.buttons.size(); ++box) {
        if (!style_.buttons[box].exists() || !boxes(static_cast<int>(box)).checked())
            continue;
        controls_.run(style_.buttons[box]);
        if (session_.LinkFailed || (!session_.USBReady && !session_.ParallelPortReady))
            return giveUp();
    }
}

void AutoReads::switchOff() {
    const ScopedValue adjusting(adjusting_, true);
    timer.disable();
    for (const int box : style_.switches)
        boxes(box).setValue(0);
}

void AutoReads::giveUp() {
    switchOff();
    const ScopedValue adjusting(adjusting_, true);
    tick(style_.lost, false);
}

} // namespace bitlux
