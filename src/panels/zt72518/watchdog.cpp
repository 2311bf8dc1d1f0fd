#include "panels/zt72518/watchdog.h"

#include "panels/common/colours.h"
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
constexpr const char* stopLine = "Stop Watchdog";
constexpr const char* startCurrentLine = "Start Watchdog Current";
constexpr const char* stopCurrentLine = "Stop Watchdog Current";
constexpr const char* refreshLine = "One Simple Watchdog";

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

/// With the pulse on the trigger output if it was requested for the next frame.
UsbFrame triggeredFrame(std::uint8_t command, Session& session) {
    UsbFrame frame = commandFrame(command);
    if (std::exchange(session.USBFrameTopBit, false))
        frame[0] = dongle::triggerBit;
    return frame;
}

} // namespace

/// A button of the array, its effect, and the line that it appends to the sequence instead.
struct Watchdog::Press {
    const char* caption;
    void (Watchdog::*action)();
    const char* line = nullptr;
};

// The pulse of current has its four buttons on two pages, and the single refresh too.
const std::array<Watchdog::Press, 16> Watchdog::presses{{
    {"Config WatchDog   START", &Watchdog::start},
    {">SEQ", &Watchdog::appendStart},
    {"STOP Watchdog", &Watchdog::stop},
    {">SEQ", nullptr, stopLine},
    {"Config Wd current   START", &Watchdog::startCurrent},
    {">SEQ", nullptr, startCurrentLine},
    {"STOP WD current", &Watchdog::stopCurrent},
    {">SEQ", nullptr, stopCurrentLine},
    {"Config Wd current   START", &Watchdog::startCurrent},
    {">SEQ", nullptr, startCurrentLine},
    {"STOP WD current", &Watchdog::stopCurrent},
    {">SEQ", nullptr, stopCurrentLine},
    {"Simple WatchDog", &Watchdog::refreshOnce},
    {">SEQ", nullptr, refreshLine},
    {"Simple WatchDog", &Watchdog::refreshOnce},
    {"Change Value", &Watchdog::change},
}};

Watchdog::Watchdog(const PanelContext& context)
    : form_(context.form),
      session_(context.outside.session),
      dongle_(context.outside.dongle),
      boxes_(context.outside.desk.boxes),
      sequence_(context.sequence.lists),
      words_(context.part<ChipWords>()),
      store_(context.part<CommandStore>()),
      note_(context),
      wd_config(configurations(context.form)),
      wd_current_time(context.form, "wd_current_time", 0, longestHighTime),
      wd_aff(context.form, "wd_aff", 5),
      wd_refresh(context.form, "wd_refresh", 2),
      watchdog("watchdog", 0, static_cast<int>(presses.size()) - 1,
               [&context](const std::string& name, int index) {
                   return std::make_unique<forms::Button>(
                       context.form, name, presses.at(static_cast<std::size_t>(index)).caption,
                       index);
               }) {
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
    UsbFrame frame = triggeredFrame(dongle::watchdog, session_);
    frame[3] = frameByte(mode);
    frame[4] = frameByte(time);
    note_.commanded(mode != 0 && mode != dongle::watchdogStop, commandDongle(frame));
}

void Watchdog::send_wd_current() {
    if (!session_.USBReady)
        return;
    UsbFrame frame = triggeredFrame(dongle::watchdogCurrent, session_);
    if (session_.WdCurrentOn) {
        frame[3] = dongle::watchdogCurrentOn;
        frame[5] = frameByte(wd_current_time.value());
        frame[6] = frameByte(wd_config(2).listIndex());
    }
    commandDongle(frame);
}

bool Watchdog::commandDongle(const UsbFrame& frame) {
    UsbFrame answer{};
    return dongle_.exchange(frame, answer, DongleLink::Wait::Limited);
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
    if (index < 0 || index > watchdog.last())
        throw Failure(Failure::Kind::OutOfRange, fmt::format("There is no watchdog({})", index));
    const Press& press = presses.at(static_cast<std::size_t>(index));
    if (press.line != nullptr)
        sequence_.append(press.line, "");
    else
        (this->*press.action)();
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
    store_.note(stopLine);
}

void Watchdog::startCurrent() {
    session_.WdCurrentOn = true;
    if (wd_config(2).listIndex() < 0) {
        boxes_.show({.text = "Please configure WatchDog Current"});
        return;
    }
    send_wd_current();
    store_.note(startCurrentLine);
}

void Watchdog::stopCurrent() {
    session_.WdCurrentOn = false;
    send_wd_current();
    store_.note(stopCurrentLine);
}

void Watchdog::refreshOnce() {
    words_.send(refreshHigh, 0);
    store_.note(refreshLine);
}

void Watchdog::showTime() {
    wd_aff(0).setCaption(fmt::format("TH = {} ms", wd_current_time.value()));
}

void Watchdog::showState(bool on) {
    wd_aff(1).setCaption(on ? "Watch Dog is ON" : "Watch Dog is OFF");
    wd_aff(1).setBackColor(on ? alarmColour : forms::buttonFaceColor);
}

} // namespace bitlux::zt72518
