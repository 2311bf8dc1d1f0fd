#include "panels/zt72518/watchdog.h"

#include "panels/common/colours.h"
#include "panels/zt72518/dongle_services.h"
#include "platform/dongle_commands.h"
#include "platform/failure.h"
#include "transfer/dongle_frame.h"

#include <algorithm>
#include <array>
#include <memory>
#include <span>
#include <utility>
#include <vector>

#include <fmt/format.h>

namespace bitlux::zt72518 {

namespace {

constexpr std::array<std::string_view, 4> modes{"Simple WD", "Enhanced 1", "Enhanced 2",
                                                "Enhanced 4"};
constexpr std::array<std::string_view, 9> lowTimes{"30 ms", "50 ms", "100 ms", "200 ms", "500 ms",
                                                   "1 s",   "2 s",   "5 s",    "10 s"};
constexpr std::array<const char*, 16> captions{
    "Config WatchDog   START",   ">SEQ", "STOP Watchdog",   ">SEQ",
    "Config Wd current   START", ">SEQ", "STOP WD current", ">SEQ",
    "Config Wd current   START", ">SEQ", "STOP WD current", ">SEQ",
    "Simple WatchDog",           ">SEQ", "Simple WatchDog", "Change Value"};

constexpr int longestHighTime = 255;
constexpr int usualHighTime = 5;
constexpr std::uint8_t refreshHigh = 0x5A; ///< a write of the watchdog's register

std::optional<int> numberOf(std::span<const std::string_view> texts, std::string_view text) {
    const auto found = std::find(texts.begin(), texts.end(), text);
    if (found == texts.end())
        return std::nullopt;
    return static_cast<int>(found - texts.begin());
}

forms::ControlArray<forms::ComboBox> configurations(forms::Form& form) {
    constexpr int last = 3;
    return {"wd_config", 0, last, [&form](const std::string& name, int index) {
                std::span<const std::string_view> items = dongle::watchdogTimes;
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

Watchdog::Watchdog(const PanelContext& context)
    : session_(context.outside.session),
      dongle_(context.outside.dongle),
      boxes_(context.outside.desk.boxes),
      sequence_(context.sequence.lists),
      words_(context.part<ChipWords>()),
      store_(context.part<CommandStore>()),
      wd_config(configurations(context.form)),
      wd_current_time(context.form, "wd_current_time", 0, longestHighTime),
      wd_aff(context.form, "wd_aff", 5),
      wd_refresh(context.form, "wd_refresh", 2),
      watchdog(buttons(context.form)) {
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
    forms::Form& form = context.form;
    form.variable("WdConfigRequest", session_.WdConfigRequest);
    form.variable("WdSequenceRequest", session_.WdSequenceRequest);
    form.variable("WdSequenceMode", session_.WdSequenceMode);
    form.variable("WdSequenceTime", session_.WdSequenceTime);
    form.variable("WdCurrentOn", session_.WdCurrentOn);
    form.variable("WdStopRequest", session_.WdStopRequest);
    form.procedure("wd_current_time_Change", [this] { showTime(); });
    form.procedure("wd_current_time_Scroll", [this] { showTime(); });
    form.procedure("watchdog_Click", [this](int index) { watchdog_Click(index); });
    form.procedure("decod_wd_time", [this](int line) { decod_wd_time(line); });
    form.procedure("send_wd", [this] { send_wd(); });
    form.procedure("send_wd_current", [this] { send_wd_current(); });
}

std::optional<int> Watchdog::timeNumber(std::string_view text) {
    return numberOf(dongle::watchdogTimes, text);
}

std::optional<int> Watchdog::modeNumber(std::string_view text) {
    return numberOf(modes, text);
}

void Watchdog::send_wd() {
    if (!session_.USBReady)
        return;
    int mode = 0;
    int time = 0;
    if (session_.WdStopRequest) {
        mode = dongle::watchdogStop;
        session_.WdStopRequest = false;
        session_.WdConfigRequest = false;
    }
    if (std::exchange(session_.WdConfigRequest, false)) {
        mode = wd_config(0).listIndex() + dongle::watchdogFirstMode;
        time = wd_config(1).listIndex();
    }
    if (std::exchange(session_.WdSequenceRequest, false)) {
        mode = session_.WdSequenceMode + dongle::watchdogFirstMode;
        time = session_.WdSequenceTime;
        showState(true);
    }
    sendWatchdog(session_, dongle_, frameByte(mode), frameByte(time));
}

void Watchdog::send_wd_current() {
    if (!session_.USBReady)
        return;
    if (session_.WdCurrentOn)
        sendWatchdogCurrent(session_, dongle_, dongle::watchdogCurrentOn,
                            frameByte(wd_current_time.value()),
                            frameByte(wd_config(2).listIndex()));
    else
        sendWatchdogCurrent(session_, dongle_, 0, 0, 0);
}

void Watchdog::decod_wd_time(int line) {
    if (const std::optional<int> time = timeNumber(sequence_.value(line)))
        session_.WdSequenceTime = static_cast<std::int16_t>(*time);
}

void Watchdog::startBySequence(int mode, int line) {
    session_.WdSequenceMode = static_cast<std::int16_t>(mode);
    session_.WdSequenceRequest = true;
    decod_wd_time(line);
    send_wd();
}

void Watchdog::watchdog_Click(int index) {
    switch (index) {
    case 0:
        return start();
    case 1:
        return sequence_.append(wd_config(0).text(), wd_config(1).text());
    case 2:
        return stop();
    case 3:
        return sequence_.append("Stop Watchdog", "");
    case 4:
    case 8:
        return startCurrent();
    case 5:
    case 9:
        return sequence_.append("Start Watchdog Current", "");
    case 6:
    case 10:
        return stopCurrent();
    case 7:
    case 11:
        return sequence_.append("Stop Watchdog Current", "");
    case 12:
    case 14:
        return refreshOnce();
    case 13:
        return sequence_.append("One Simple Watchdog", "");
    case 15:
        return changeValue();
    default:
        throw Failure(Failure::Kind::OutOfRange, fmt::format("There is no watchdog({})", index));
    }
}

void Watchdog::start() {
    session_.WdConfigRequest = true;
    if (wd_config(0).listIndex() < 0 || wd_config(1).listIndex() < 0) {
        boxes_.show({.text = "Please configure WatchDog"});
        return;
    }
    send_wd();
    showState(true);
    store_.note(wd_config(0).text(), wd_config(1).text());
}

void Watchdog::stop() {
    session_.WdStopRequest = true;
    session_.WdConfigRequest = false;
    send_wd();
    showState(false);
    store_.note("Stop Watchdog");
}

void Watchdog::startCurrent() {
    session_.WdCurrentOn = true;
    if (wd_config(2).listIndex() < 0) {
        boxes_.show({.text = "Please configure WatchDog Current"});
        return;
    }
    send_wd_current();
    store_.note("Start Watchdog Current");
}

void Watchdog::stopCurrent() {
    session_.WdCurrentOn = false;
    send_wd_current();
    store_.note("Stop Watchdog Current");
}

void Watchdog::refreshOnce() {
    words_.send(refreshHigh, 0);
    store_.note("One Simple Watchdog");
}

void Watchdog::showTime() {
    wd_aff(0).setCaption(fmt::format("TH = {} ms", wd_current_time.value()));
}

void Watchdog::showState(bool on) {
    wd_aff(1).setCaption(on ? "Watch Dog is ON" : "Watch Dog is OFF");
    wd_aff(1).setBackColor(on ? alarmColour : forms::buttonFaceColor);
}

} // namespace bitlux::zt72518
