#include "panels/zt72537/low_power.h"

#include "panels/zt72537/watchdog.h"
#include "platform/scoped_value.h"

#include <array>
#include <string>

namespace bitlux::zt72537 {

namespace {

constexpr int stopMode = 1;
constexpr int sleepMode = 2;

constexpr const char* wakeUpFrame = "wakeUpModeSelectFrame";
constexpr const char* watchdogFrame = "wdClearSelectFrame";
constexpr std::array<const char*, 4> usualPage{"Frame1", "Frame2", "CmdMcr", "Seq_MCR_W"};
constexpr std::array<const char*, 4> procedurePage{"Lbl_enter", "CmdSelectWakeUp",
                                                   "CmdSelectWDClear", "CmdMcr2"};

constexpr ControlRef normalMode{"OptMcr", 0};
constexpr ControlRef forcedWakeUp{"WakeUpModeOpt", 0};
constexpr ControlRef cyclicSense{"WakeUpModeOpt", 1};
constexpr ControlRef noWakeUp{"WakeUpModeOpt", 2};
constexpr ControlRef stopsReads{"wd_en", 2};
constexpr ControlRef timesCyclicSense{"OptCswd", 1};
constexpr ControlRef noCyclicSense{"OptTimcr", 8};

constexpr int wakeUpInputs = 4;

/// A high side: its box in the procedure, and the options that switch it on and off.
struct HighSide {
    ControlRef box;
    ControlRef on;
};
constexpr std::array<HighSide, 2> highSides{
    {{{"WakeUpModeCheck", 4}, {"OptHscr", 4}}, {{"WakeUpModeCheck", 5}, {"OptHscr", 6}}}};

} // namespace

LowPower::LowPower(const PanelContext& context)
    : session_(context.outside.session),
      engine_(context.outside.engine),
      boxes_(context.outside.desk.boxes),
      controls_(context.controls),
      watchdog_(context.part<Watchdog>()) {
    linkWakeUps();
    linkCyclicSense();
    for (const char* back : {"Command6", "Command7"})
        controls_.onClick(back, [this] { goBack(); });
    constexpr int modes = 4;
    for (int mode = 0; mode < modes; ++mode)
        controls_.onClick({"OptMcr", mode}, [this, mode] { OptMcr_Click(mode); });
    controls_.onClick("CmdSelectWakeUp", [this] { showStep(wakeUpFrame); });
    controls_.onClick("CmdSelectWDClear", [this] { showStep(watchdogFrame); });
    controls_.onClick("CmdMcr2", [this] { CmdMcr2_Click(); });
    guide(false);
}

/// The boxes of the procedure set the boxes of the inputs' page, and follow them. The boxes of the
/// high sides switch them on and off on their page; they are cleared initially, since one must be
/// chosen.
void LowPower::linkWakeUps() {
    for (int input = 0; input < wakeUpInputs; ++input) {
        const ControlRef here{"WakeUpModeCheck", input};
        const ControlRef there{"CheckWucr", input};
        const auto copy = [this](const ControlRef& from, const ControlRef& to) {
            controls_.get<forms::CheckBox>(to).setValue(
                controls_.get<forms::CheckBox>(from).value());
        };
        controls_.onClick(here, [copy, here, there] { copy(here, there); });
        controls_.onClick(there, [copy, here, there] { copy(there, here); });
    }
    for (const HighSide& side : highSides)
        controls_.onClick(side.box,
                          [this, &side] { choose(isTicked(side.box) ? side.on : side.on + 1); });
}

/// Chooses the interval on the page of the timing. Without a scheduled wake-up a cyclic sense that
/// is timed there has none.
void LowPower::linkCyclicSense() {
    controls_.onClick("CyclicSenseCombo", [this] {
        const int interval = controls_.get<forms::ComboBox>("CyclicSenseCombo").listIndex();
        if (interval < 0)
            return;
        choose(timesCyclicSense);
        choose(noCyclicSense + (interval + 1));
    });
    controls_.onClick(noWakeUp, [this] {
        if (isChosen(timesCyclicSense))
            choose(noCyclicSense);
    });
}

void LowPower::choose(const ControlRef& option) const {
    controls_.get<forms::OptionButton>(option).setValue(true);
}

bool LowPower::isChosen(const ControlRef& option) const {
    return controls_.get<forms::OptionButton>(option).value();
}

bool LowPower::isTicked(const ControlRef& box) const {
    return controls_.get<forms::CheckBox>(box).checked();
}

void LowPower::OptMcr_Click(int mode) {
    const bool entering = mode == stopMode || mode == sleepMode;
    guide(entering);
    if (!entering)
        return;
    const std::string name = mode == stopMode ? "Stop Mode" : "Sleep Mode";
    controls_.get<forms::Button>("CmdMcr2").setCaption("Enter in " + name);
    controls_.get<forms::Label>("Lbl_enter")
        .setCaption("Send the different commands then enter in " + name);
    controls_.get<forms::Frame>(wakeUpFrame)
        .setCaption("Select Wake-Up Modes before enter in " + name);
    controls_.get<forms::Frame>(watchdogFrame)
        .setCaption("Select Watch-Dog Clear before enter in " + name);
}

void LowPower::guide(bool on) {
    for (const char* name : usualPage)
        controls_.find(name)->setVisible(!on);
    for (const char* name : procedurePage)
        controls_.find(name)->setVisible(on);
    controls_.find(wakeUpFrame)->setVisible(on);
    controls_.find(watchdogFrame)->hide();
}

void LowPower::showStep(const ControlRef& frame) {
    for (const char* name : {wakeUpFrame, watchdogFrame})
        controls_.find(name)->setVisible(frame.name == name);
}

void LowPower::goBack() {
    guide(false);
    choose(normalMode);
}

bool LowPower::isComplete() const {
    const bool sleeps = isChosen(cyclicSense);
    if ((isChosen(forcedWakeUp) || sleeps) &&
        controls_.get<forms::ComboBox>("CyclicSenseCombo").listIndex() < 0) {
        boxes_.show({.text = "Please choice an Interval", .title = "Interval"});
        return false;
    }
    if (sleeps && !isTicked(highSides[0].box) && !isTicked(highSides[1].box)) {
        boxes_.show({.text = "Please choice Select at least one High-Side"});
        return false;
    }
    return true;
}

void LowPower::CmdMcr2_Click() {
    choose({"OptHscr", 1}); // only SPI controls both high sides
    choose({"OptHscr", 3});
    if (!isComplete())
        return;
    if (isTicked(stopsReads))
        watchdog_.stopReads();
    send();
    guide(false);
}

void LowPower::send() {
    const FailureBoxes::Run run(engine_.failures());
    controls_.run("CmdWucr");
    if (!isChosen(noWakeUp))
        controls_.run("CmdCfr");
    controls_.run("CmdTimcr");
    controls_.run("CmdHscr");
    const std::uint8_t stop = isTicked(stopsService) ? 1 : 0;
    const ScopedValue<std::uint8_t> lastByte(session_.ZT72537FrameByte7, stop);
    controls_.run("CmdMcr");
}

} // namespace bitlux::zt72537
