#include "panels/zt72518/watchdog.h"

#include "chips/zt72518/registers.h"
#include "panels/common/colours.h"
#include "platform/dongle_commands.h"
#include "platform/failure.h"

#include <algorithm>
#include <array>
#include <limits>
#include <memory>
#include <span>
#include <utility>
#include <vector>

#include <fmt/format.h>

namespace bitlux::zt72518 {

namespace chip = oldchips::zt72518;

namespace {

constexpr std::array<std::string_view, 4> modes{"Simple WD", "Enhanced 1", "Enhanced 2",
                                                "Enhanced 4"};
constexpr std::array<std::string_view, 10> times{"1ms",  "2ms",   "3ms",   "5ms", "10ms",
                                                 "50ms", "100ms", "500ms", "1s",  "5s"};
constexpr std::array<std::string_view, 9> lowTimes{"30 ms", "50 ms", "100 ms", "200 ms", "500 ms",
                                                   "1 s",   "2 s",   "5 s",    "10 s"};
constexpr std::array<const char*, 16> captions{
    "Config WatchDog   START",   ">SEQ", "STOP Watchdog",   ">SEQ",
    "Config Wd current   START", ">SEQ", "STOP WD current", ">SEQ",
    "Config Wd current   START", ">SEQ", "STOP WD current", ">SEQ",
    "Simple WatchDog",           ">SEQ", "Simple WatchDog", "Change Value"};

constexpr int longestHighTime = 255;
constexpr int usualHighTime = 5;
constexpr std::uint8_t refreshHigh = chip::writeHigh(chip::watchdogRefresh);

std::optional<int> numberOf(std::span<const std::string_view> texts, std::string_view text) {
    const auto found = std::find(texts.begin(), texts.end(), text);
    if (found == texts.end())
        return std::nullopt;
    return static_cast<int>(found - texts.begin());
}

std::uint8_t toByte(int value) {
    if (value < 0 || value > std::numeric_limits<std::uint8_t>::max())
        throw Failure(Failure::Kind::Overflow, "Overflow");
    return static_cast<std::uint8_t>(value);
}

forms::ControlArray<forms::ComboBox> configurations(forms::Form& form) {
    constexpr int last = 3;
    return {"wd_config", 0, last, [&form](const std::string& name, int index) {
                std::span<const std::string_view> items = times;
                if (index == 0)
                    items = modes;
                else if (index == 2)
                    items = lowTimes;
                return std::make_unique<forms::ComboBox>(
                    form, name, forms::ComboBox::Style::List,
                    std::vector<std::string>(items.begin(), items.end()), index);
            }};
}

forms::ControlArray<forms::Button> buttons(forms::Form& form) {
    return {"watchdog", 0, static_cast<int>(captions.size()) - 1,
            [&form](const std::string& name, int index) {
                return std::make_unique<forms::Button>(
                    form, name, captions.at(static_cast<std::size_t>(index)), index);
            }};
}

} // namespace

Watchdog::Watchdog(forms::Form& form, const Parts& parts)
    : parts_(parts),
      variables_(parts.variables),
      wd_config(configurations(form)),
      wd_current_time(form, "wd_current_time", 0, longestHighTime),
      wd_aff(form, "wd_aff", 5),
      wd_refresh(form, "wd_refresh", 2),
      watchdog(buttons(form)) {
    wd_config(3).hide();
    wd_current_time.setValue(usualHighTime);
    wd_config(0).setEditText("WatchDog mode");
    wd_config(1).setEditText("WatchDog timer");
    wd_config(2).setEditText("WatchDog TL");
    wd_refresh(0).setCaption("WatchDog mode");
    wd_refresh(1).setCaption("WatchDog timer");
    wd_aff(2).setCaption("WatchDog TL");
    wd_aff(3).setCaption("WatchDog TH");
    wd_aff(4).setCaption("Trigger line");
    showTime();
    showState(false);
    for (const int once : {12, 14})
        watchdog(once).setTooltip(fmt::format("0x{:02X}00", refreshHigh));
    form.procedure("wd_current_time_Change", [this] { showTime(); });
    form.procedure("wd_current_time_Scroll", [this] { showTime(); });
    form.procedure("watchdog_Click", [this](int index) { watchdog_Click(index); });
    form.procedure("decod_wd_time", [this](int line) { decod_wd_time(line); });
    form.procedure("send_wd", [this] { send_wd(); });
    form.procedure("send_wd_current", [this] { send_wd_current(); });
}

std::optional<int> Watchdog::timeNumber(std::string_view text) {
    return numberOf(times, text);
}

std::optional<int> Watchdog::modeNumber(std::string_view text) {
    return numberOf(modes, text);
}

void Watchdog::send_wd() {
    if (!parts_.session.USBReady)
        return;
    int mode = 0;
    int time = 0;
    if (parts_.session.WdStopRequest) {
        mode = dongle::watchdogStop;
        parts_.session.WdStopRequest = false;
        parts_.session.WdConfigRequest = false;
    }
    if (std::exchange(parts_.session.WdConfigRequest, false)) {
        mode = wd_config(0).listIndex() + dongle::watchdogFirstMode;
        time = wd_config(1).listIndex();
    }
    if (std::exchange(parts_.session.WdSequenceRequest, false)) {
        mode = parts_.session.WdSequenceMode + dongle::watchdogFirstMode;
        time = parts_.session.WdSequenceTime;
        showState(true);
    }
    parts_.dongle.send_wd(toByte(mode), toByte(time));
}

void Watchdog::send_wd_current() {
    if (!parts_.session.USBReady)
        return;
    if (parts_.session.WdCurrentOn)
        parts_.dongle.send_wd_current(dongle::watchdogCurrentOn, toByte(wd_current_time.value()),
                                      toByte(wd_config(2).listIndex()));
    else
        parts_.dongle.send_wd_current(0, 0, 0);
}

void Watchdog::decod_wd_time(int line) {
    if (const std::optional<int> time = timeNumber(parts_.sequence.value(line)))
        parts_.session.WdSequenceTime = static_cast<std::int16_t>(*time);
}

void Watchdog::startBySequence(int mode, int line) {
    parts_.session.WdSequenceMode = static_cast<std::int16_t>(mode);
    parts_.session.WdSequenceRequest = true;
    decod_wd_time(line);
    send_wd();
}

void Watchdog::watchdog_Click(int index) {
    switch (index) {
    case 0:
        return start();
    case 1:
        return parts_.sequence.append(wd_config(0).text(), wd_config(1).text());
    case 2:
        return stop();
    case 3:
        return parts_.sequence.append("Stop Watchdog", "");
    case 4:
    case 8:
        return startCurrent();
    case 5:
    case 9:
        return parts_.sequence.append("Start Watchdog Current", "");
    case 6:
    case 10:
        return stopCurrent();
    case 7:
    case 11:
        return parts_.sequence.append("Stop Watchdog Current", "");
    case 12:
    case 14:
        return refreshOnce();
    case 13:
        return parts_.sequence.append("One Simple Watchdog", "");
    case 15:
        return changeValue();
    default:
        throw Failure(Failure::Kind::OutOfRange, fmt::format("There is no watchdog({})", index));
    }
}

void Watchdog::start() {
    parts_.session.WdConfigRequest = true;
    if (wd_config(0).listIndex() < 0 || wd_config(1).listIndex() < 0) {
        parts_.boxes.show({.text = "Please configure WatchDog"});
        return;
    }
    send_wd();
    showState(true);
    note(wd_config(0).text(), wd_config(1).text());
}

void Watchdog::stop() {
    parts_.session.WdStopRequest = true;
    parts_.session.WdConfigRequest = false;
    send_wd();
    showState(false);
    note("Stop Watchdog");
}

void Watchdog::startCurrent() {
    parts_.session.WdCurrentOn = true;
    if (wd_config(2).listIndex() < 0) {
        parts_.boxes.show({.text = "Please configure WatchDog Current"});
        return;
    }
    send_wd_current();
    note("Start Watchdog Current");
}

void Watchdog::stopCurrent() {
    parts_.session.WdCurrentOn = false;
    send_wd_current();
    note("Stop Watchdog Current");
}

void Watchdog::refreshOnce() {
    parts_.link.send(refreshHigh, 0);
    note("One Simple Watchdog");
}

void Watchdog::showTime() {
    wd_aff(0).setCaption(fmt::format("TH = {} ms", wd_current_time.value()));
}

void Watchdog::showState(bool on) {
    wd_aff(1).setCaption(on ? "Watch Dog is ON" : "Watch Dog is OFF");
    wd_aff(1).setBackColor(on ? alarmColour : forms::buttonFaceColor);
}

void Watchdog::note(const std::string& command, const std::string& value) {
    if (variables_.StoreCommands)
        store(command, value);
}

} // namespace bitlux::zt72518
