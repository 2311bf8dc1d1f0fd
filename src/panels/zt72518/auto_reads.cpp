#include "panels/zt72518/auto_reads.h"

#include "chips/zt72518/flags.h"
#include "chips/zt72518/registers.h"
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

/// What a box reads: a button of the register pages.
struct AutoRead {
    int box;
    oldchips::ControlName button;
};

/// In the order in which they are read.
constexpr std::array<AutoRead, 36> reads{
    {{0, {"Cm_Mux_Rl"}},         {1, {"Cm_Init_Reg_Rl"}},  {2, {"Cm_Init_Wdog_Rl"}},
     {3, {"Cm_Init_Lin_Io_Rl"}}, {4, {"Cm_Init_Misc_Rl"}}, {5, {"Cm_Spe_Mode_Rl"}},
     {6, {"Cm_Timer0_Rl"}},      {7, {"Cm_Timer1_Rl"}},    {8, {"Cm_Timer2_Rl"}},
     {9, {"Cm_Wd_Refresh_Rl"}},  {10, {"Cm_Mode_Rm_Rl"}},  {11, {"Cm_Regulateur_Rl"}},
     {12, {"Cm_CAN_Rl"}},        {13, {"Cm_Io_Rl"}},       {14, {"Cm_interrupts_Rl"}},
     {15, {"Cm_Lin0_Rl"}},       {16, {"Cm_Lin1_Rl"}},     {17, {"Cm_Mode_Rm_Rh"}},
     {18, {"Cm_CAN_Rh"}},        {19, {"Cm_I0_Rh"}},       {20, {"Cm_Interrupts_Rh"}},
     {21, {"CM_Lin0_Rh"}},       {22, {"Cm_Lin1_Rh"}},     {23, {"Cm_RFl", 0}},
     {24, {"Cm_RFl", 1}},        {25, {"Cm_RFl", 2}},      {26, {"Cm_RFl", 3}},
     {27, {"Cm_RFl", 4}},        {28, {"Cm_RFl", 5}},      {29, {"Cm_RFl", 6}},
     {30, {"Cm_RFh", 0}},        {31, {"Cm_RFh", 1}},      {32, {"Cm_RFh", 2}},
     {33, {"Cm_RFh", 3}},        {35, {"Cm_RFh", 4}},      {36, {"Cm_ReadAll_Rl", 1}}}};

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

/// Title of the register or the flags that a button reads.
std::string titleOf(const oldchips::ControlName& button) {
    for (const oldchips::Register& any : oldchips::zt72518::registers) {
        if (any.low.readButton == button)
            return std::string(any.title);
        if (any.high.exists() && any.high.readButton == button)
            return std::string(any.title) + " high";
    }
    const auto row = static_cast<std::size_t>(button.index);
    if (button.name == "Cm_RFl")
        return std::string(oldchips::zt72518::lowFlagRows.at(row).title);
    if (button.name == "Cm_RFh")
        return std::string(oldchips::zt72518::highFlagRows.at(row).title);
    return "General Flags";
}

std::string captionOf(int box) {
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
    const auto* const read = std::find_if(reads.begin(), reads.end(),
                                          [box](const AutoRead& any) { return any.box == box; });
    return read == reads.end() ? std::string() : titleOf(read->button);
}

} // namespace

AutoReads::AutoReads(forms::Form& form, const Parts& parts)
    : parts_(parts),
      read_auto("read_auto", 0, lastBox,
                [&form](const std::string& name, int box) {
                    return std::make_unique<forms::CheckBox>(form, name, captionOf(box), box);
                }),
      timer_auto(form, "timer_auto", interval) {
    read_auto(modeRead).setTooltip("Read device Mode. Effect: keep SAFE pin and Leave DEBUG ");
    form.procedure("read_auto_Click", [this](int box) { read_auto_Click(box); });
    form.procedure("timer_auto_Timer", [this] { timer_auto_Timer(); });
    parts_.store.stopped = [this] { showRecording(); };
    linkFailed_ = parts_.dongle.failed.follow([this] { giveUp(); });
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
            parts_.store.start();
        else
            parts_.store.stop();
    } catch (...) {
        showRecording();
        throw;
    }
    showRecording();
}

void AutoReads::showRecording() {
    const ScopedValue adjusting(adjusting_, true);
    for (const int box : recorders)
        read_auto(box).setValue(parts_.variables.StoreCommands ? 1 : 0);
}

void AutoReads::timer_auto_Timer() {
    if (parts_.link.linkFailed())
        return switchOff();
    for (const AutoRead& read : reads) {
        if (!read_auto(read.box).checked())
            continue;
        parts_.controls.run(read.button);
        if (parts_.link.isOutOfReach())
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
