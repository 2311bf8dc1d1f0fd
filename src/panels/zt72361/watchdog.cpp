#include "panels/zt72361/watchdog.h"

#include "panels/common/byte_service.h"
#include "panels/common/described_register.h"
#include "platform/dongle_commands.h"

#include <string>

namespace bitlux::zt72361 {

namespace {

constexpr ControlRef off{"OptWdEn", 0};
constexpr ControlRef on{"OptWdEn", 1};
constexpr int timerWord = 176; ///< writes timer 1

} // namespace

Watchdog::Watchdog(const PanelContext& context)
    : outside_(context.outside),
      timer_(describedRegister(context.chip, "TIM 1")),
      pages_(context.pages),
      controls_(context.controls),
      period_(context.controls.get<forms::ScrollBar>("HscWd")),
      note_(context) {
    controls_.onClick(off, [this] { OptWdEn_Click(false); });
    controls_.onClick(on, [this] { OptWdEn_Click(true); });
    context.form.procedure("HscWd_Change", [this] {
        controls_.get<forms::Label>({"LblWd", 4}).setCaption(std::to_string(2 * period_.value()));
        start();
    });
}

bool Watchdog::isOn() const {
    return controls_.get<forms::OptionButton>(on).value();
}

void Watchdog::choose(bool wanted) {
    controls_.get<forms::OptionButton>(wanted ? on : off).setValue(true);
}

/// A change of the option runs its handler, and this runs it again: the frame is sent in any case.
void Watchdog::start() {
    choose(true);
    OptWdEn_Click(true);
}

void Watchdog::OptWdEn_Click(bool starts) {
    if (starts)
        outside_.session.ZT72361Data = static_cast<std::uint8_t>(pages_.value(timer_));
    send_wd_361(starts ? 1 : 0);
}

void Watchdog::send_wd_361(int state) {
    commandByteService(outside_,
                       {.chip = dongle::serve72361,
                        .state = state,
                        .word = timerWord + outside_.session.ZT72361Data,
                        .period = period_.value()},
                       note_);
}

} // namespace bitlux::zt72361
