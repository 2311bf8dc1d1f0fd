#include "panels/zt72537/watchdog.h"

#include "panels/common/byte_service.h"
#include "platform/conversions.h"
#include "platform/dongle_commands.h"

#include <cmath>
#include <optional>
#include <string>

#include <fmt/format.h>

namespace bitlux::zt72537 {

namespace {

constexpr ControlRef served{"wd_en", 0};
constexpr ControlRef checksInterrupt{"wd_en", 3};
constexpr ControlRef period{"wd_aff", 0};
constexpr ControlRef indicator{"ShpRead", 1};

constexpr int clearWord = 3;  // "Normal Mode + Watch-Dog Clear"
constexpr int interval = 500; // ms
constexpr forms::Color bright = 0x8080FF;
constexpr forms::Color white = 0xFFFFFF;

/// In ms, for a resistor in kOhm within the chip's range.
std::optional<double> periodOf(const std::string& resistor) {
    constexpr double least = 20;
    constexpr double beyond = 320;
    const std::optional<double> value = wholeNumber<double>(resistor);
    if (!value || !(*value >= least && *value < beyond))
        return std::nullopt;
    return (*value - least) * 0.466 + 10;
}

} // namespace

Watchdog::Watchdog(const PanelContext& context)
    : outside_(context.outside),
      controls_(context.controls),
      wd_time_(context.controls.get<forms::ScrollBar>("wd_time")),
      note_(context),
      tim_int_(context.form, "tim_int", interval),
      autoRead_(context, {.on = {"OptRead", 2}, .off = {"OptRead", 3}}, [this] {
          controls_.run("CmdReadAll");
          auto& lamp = controls_.get<forms::Label>(indicator);
          lamp.setBackColor(lamp.backColor() == white ? bright : white);
      }) {
    controls_.onClick(served, [this] { commandDongle(); });
    controls_.onClick(stopsService, [this] { stopChanges(); });
    controls_.onClick(checksInterrupt, [this] { checkInterrupt(); });
    addProcedures(context.form);
}

void Watchdog::addProcedures(forms::Form& form) {
    for (const char* event : {"wd_time_Change", "wd_time_Scroll"})
        form.procedure(event, [this] {
            controls_.get<forms::Label>(period).setCaption(
                fmt::format("T = {} ms", wd_time_.value()));
            commandDongle();
        });
    form.procedure("WDConfResistor_Change", [this] { WDConfResistor_Change(); });
    form.procedure("tim_int_Timer", [this] { tim_int_Timer(); });
}

void Watchdog::load() {
    outside_.session.ZT72537FrameByte7 = 0;
    outside_.session.LinkFailed = false;
}

void Watchdog::commandDongle() {
    send_wd_537(controls_.get<forms::CheckBox>(served).value());
}

void Watchdog::send_wd_537(int state) {
    constexpr int on = 2;
    commandByteService(outside_,
                       {.chip = dongle::serve72537,
                        .state = on * state,
                        .word = clearWord,
                        .period = wd_time_.value()},
                       note_);
}

void Watchdog::stopReads() {
    autoRead_.switchOff();
}

void Watchdog::WDConfResistor_Change() {
    const std::optional<double> time =
        periodOf(controls_.get<forms::TextBox>("WDConfResistor").text());
    if (!time)
        return;
    constexpr int digits = 15;
    controls_.get<forms::Label>("WDPeriod")
        .setCaption(fmt::format("Watch-Dog Clear Period : {:.{}g} ms", *time, digits));
    wd_time_.setValue(static_cast<int>(std::lround(*time)));
}

void Watchdog::stopChanges() {
    const bool stops = controls_.get<forms::CheckBox>(stopsService).checked();
    auto& check = controls_.get<forms::CheckBox>(checksInterrupt);
    check.setEnabled(stops);
    check.setValue(stops ? 1 : 0);
}

void Watchdog::checkInterrupt() {
    const bool on = controls_.get<forms::CheckBox>(checksInterrupt).checked();
    tim_int_.setEnabled(on);
    for (const char* label : {"Lbl_check_int", "Lbl_check_int2"})
        controls_.find(label)->setVisible(on);
}

void Watchdog::tim_int_Timer() {
    constexpr int steps = 4;
    step_ = (step_ + 1) % steps;
    controls_.get<forms::Label>("Lbl_check_int")
        .setCaption("Check INT pin" + std::string(static_cast<std::size_t>(step_), '.'));
}

} // namespace bitlux::zt72537
