#include "panels/zt72516/watchdog.h"

#include "platform/dongle_commands.h"
#include "platform/forms/form_set.h"
#include "transfer/dongle_frame.h"

#include <initializer_list>
#include <utility>

namespace bitlux::zt72516 {

namespace {

constexpr forms::Color onColour = 0x00FF00;
constexpr forms::Color offColour = 0x0000FF;
constexpr const char* otherPanel = "ZT72518";

} // namespace

Watchdog::Watchdog(const PanelContext& context)
    : session_(context.outside.session),
      dongle_(context.outside.dongle),
      boxes_(context.outside.desk.boxes),
      forms_(context.form.set()),
      note_(context),
      Check_UseSpiDongleForWD(context.form, "Check_UseSpiDongleForWD",
                              "Use SPI Dongle to Send Watchdog Refresh"),
      Watchdog_Mode(context.form, "Watchdog_Mode", forms::ComboBox::Style::List,
                    {"Simple", "Advanced 1", "Advanced 2", "Advanced 4"}),
      Watchdog_Timing(context.form, "Watchdog_Timing", forms::ComboBox::Style::List,
                      {dongle::watchdogTimes.begin(), dongle::watchdogTimes.end()}),
      Btn_Start_Watchdog(context.form, "Btn_Start_Watchdog", "START Watchdog"),
      Btn_Stop_Watchdog(context.form, "Btn_Stop_Watchdog", "STOP Watchdog"),
      Watchdog_Status(context.form, "Watchdog_Status", "Watchdog is Off") {
    Watchdog_Mode.setEditText("Watchdog Mode");
    Watchdog_Timing.setEditText("Watchdog Timing");
    enable(false);
    forms::Form& form = context.form;
    form.procedure("Btn_Start_Watchdog_Click", [this] { Btn_Start_Watchdog_Click(); });
    form.procedure("Btn_Stop_Watchdog_Click", [this] { Btn_Stop_Watchdog_Click(); });
    form.procedure("Check_UseSpiDongleForWD_Click", [this] { Check_UseSpiDongleForWD_Click(); });
}

void Watchdog::enable(bool on) {
    for (forms::Control* control : std::initializer_list<forms::Control*>{
             &Watchdog_Mode, &Watchdog_Timing, &Btn_Start_Watchdog, &Btn_Stop_Watchdog,
             &Watchdog_Status})
        control->setEnabled(on);
}

void Watchdog::Check_UseSpiDongleForWD_Click() {
    enable(Check_UseSpiDongleForWD.checked());
    if (!Check_UseSpiDongleForWD.checked())
        Btn_Stop_Watchdog_Click();
}

void Watchdog::commandDongle(bool starts) {
    session_.ZT72516WatchdogStart = starts;
    const bool hasDongle = session_.USBReady;
    const bool answered = Send72516WatchdogCmd(session_, dongle_, forms_,
                                               [this]() -> const Watchdog& { return *this; });
    if (hasDongle)
        note_.commanded(starts, answered);
}

void Watchdog::Btn_Start_Watchdog_Click() {
    session_.ZT72516WatchdogStart = true;
    if (Watchdog_Mode.listIndex() < 0 || Watchdog_Timing.listIndex() < 0) {
        boxes_.show({.text = "Please set watchdog mode and timing values."});
        return;
    }
    commandDongle(true);
    Watchdog_Status.setCaption("Watch Dog is ON");
    Watchdog_Status.setBackColor(onColour);
}

void Watchdog::Btn_Stop_Watchdog_Click() {
    commandDongle(false);
    Watchdog_Status.setCaption("Watch Dog is OFF");
    Watchdog_Status.setBackColor(offColour);
}

bool Send72516WatchdogCmd(Session& session, DongleLink& link, forms::FormSet& forms,
                          const std::function<const Watchdog&()>& lists) {
    if (!session.USBReady)
        return false;
    UsbFrame frame = commandFrame(dongle::watchdog72516);
    if (std::exchange(session.ZT72516WatchdogStart, false)) {
        frame[3] = frameByte(lists().Watchdog_Mode.listIndex() + dongle::watchdogFirstMode);
        frame[4] = frameByte(lists().Watchdog_Timing.listIndex());
    }
    UsbFrame answer{};
    const bool answered = link.exchange(frame, answer, DongleLink::Wait::Limited);
    if (!answered && forms.isVisible(otherPanel))
        forms.form(otherPanel).setVisible(false);
    return answered;
}

} // namespace bitlux::zt72516
