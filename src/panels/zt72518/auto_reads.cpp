#include "panels/zt72518/auto_reads.h"

#include "platform/scoped_value.h"

#include <algorithm>
#include <array>
#include <memory>
#include <string>
#include <string_view>

#include <fmt/format.h>

namespace bitlux::zt72518 {

namespace {

constexpr int interval = 500; // milliseconds

constexpr int lastBox = 43;
constexpr int lastPlainRead = 33;
constexpr int modeRead = 10;
constexpr int safeResetFlags = 35;
constexpr int firstSwitch = 34;
constexpr int lastSwitch = 38;
constexpr std::array switches{firstSwitch, 37, lastSwitch};
constexpr std::array recorders{39, 40};
constexpr int lowViews = 41;
constexpr int highViews = 42;
constexpr int flags = 43;

template <std::size_t N>
bool isOneOf(const std::array<int, N>& boxes, int box) {
    return std::find(boxes.begin(), boxes.end(), box) != boxes.end();
}

} // namespace

std::vector<AutoReads::Read> AutoReads::readsOf(const chips::Chip& chip) {
    std::vector<Read> reads;
    for (const chips::Register& any : chip.registers)
        for (const chips::View& view : any.views) {
            if (!view.autoRead.exists())
                continue;
            const bool isFlags = view.operation == chips::Operation::Flags;
            const char* high = view.extra != 0 ? " high" : "";
            reads.push_back({.box = view.autoRead.index,
                             .button = view.button,
                             .title = isFlags ? view.title : any.title + high});
        }
    for (const chips::Command& any : chip.commands)
        if (any.autoRead.exists())
            reads.push_back({any.autoRead.index, any.button, any.title});
    std::sort(reads.begin(), reads.end(),
              [](const Read& one, const Read& other) { return one.box < other.box; });
    return reads;
}

std::string AutoReads::captionOf(int box) const {
    if (isOneOf(switches, box))
        return "Auto reading";
    if (isOneOf(recorders, box))
        return "Store commands in file";
    switch (box) {
    case lowViews:
        return "All registers";
    case highViews:
        return "All high views";
    case flags:
        return "All flags";
    default:
        break;
    }
    const auto read = std::find_if(reads_.begin(), reads_.end(),
                                   [box](const Read& any) { return any.box == box; });
    return read == reads_.end() ? std::string() : read->title;
}

AutoReads::AutoReads(const PanelContext& context)
    : reads_(readsOf(context.chip)),
      controls_(context.controls),
      words_(context.part<ChipWords>()),
      store_(context.part<CommandStore>()),
      read_auto("read_auto", 0, lastBox,
                [this, &context](const std::string& name, int box) {
                    return std::make_unique<forms::CheckBox>(context.form, name, captionOf(box),
                                                             box);
                }),
      timer_auto(context.form, "timer_auto", interval) {
    forms::Form& form = context.form;
    read_auto(modeRead).setTooltip("Read device Mode. Effect: keep SAFE pin and Leave DEBUG ");
    form.procedure("read_auto_Click", [this](int box) { read_auto_Click(box); });
    form.procedure("timer_auto_Timer", [this] { timer_auto_Timer(); });
    store_.stopped = [this] { showRecording(); };
    linkFailed_ = context.outside.dongle.failed.follow([this] { giveUp(); });
}

void AutoReads::read_auto_Click(int box) {
    if (adjusting_)
        return;
    if (isOneOf(switches, box))
        switchAll(box);
    else if (isOneOf(recorders, box))
        record(read_auto(box).checked());
    else if (box >= lowViews)
        tickGroup(box);
}

void AutoReads::switchAll(int box) {
    const ScopedValue adjusting(adjusting_, true);
    const bool on = read_auto(box).checked();
    timer_auto.setEnabled(on);
    for (const int other : switches)
        if (!on || other != lastSwitch || box == firstSwitch)
            read_auto(other).setValue(on ? 1 : 0);
}

void AutoReads::tick(int first, int last, bool on) {
    for (int box = first; box <= last; ++box)
        read_auto(box).setValue(on ? 1 : 0);
}

void AutoReads::tickGroup(int box) {
    const bool on = read_auto(box).checked();
    if (box == lowViews) {
        tick(0, 16, on);
        read_auto(modeRead).setValue(0); // this one has an effect on the chip
    } else if (box == highViews) {
        tick(17, 22, on);
    } else {
        tick(24, lastPlainRead, on);
        tick(safeResetFlags, safeResetFlags, on);
    }
}

void AutoReads::record(bool on) {
    try {
        if (on)
            store_.start();
        else
            store_.stop();
    } catch (...) {
        showRecording();
        throw;
    }
    showRecording();
}

void AutoReads::showRecording() {
    const ScopedValue adjusting(adjusting_, true);
    for (const int box : recorders)
        read_auto(box).setValue(store_.StoreCommands ? 1 : 0);
}

void AutoReads::timer_auto_Timer() {
    if (words_.linkFailed())
        return switchOff();
    for (const Read& read : reads_) {
        if (!read_auto(read.box).checked())
            continue;
        controls_.run(read.button);
        if (words_.isOutOfReach())
            return giveUp();
    }
}

void AutoReads::switchOff() {
    const ScopedValue adjusting(adjusting_, true);
    timer_auto.disable();
    for (const int box : switches)
        read_auto(box).setValue(0);
}

void AutoReads::giveUp() {
    switchOff();
    const ScopedValue adjusting(adjusting_, true);
    tick(0, lastPlainRead, false);
}

} // namespace bitlux::zt72518
