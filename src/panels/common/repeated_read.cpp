#include "panels/common/repeated_read.h"

#include <string>
#include <utility>

namespace bitlux {

namespace {

constexpr const char* timerName = "timer_auto_read";
constexpr int interval = 500; // ms

} // namespace

RepeatedRead::RepeatedRead(const PanelContext& context, const Names& names,
                           std::function<void()> read, std::function<void(bool on)> switched)
    : timer_(context.form, timerName, interval),
      on_(context.controls.get<forms::OptionButton>(names.on)),
      off_(context.controls.get<forms::OptionButton>(names.off)),
      linkFailed_(context.outside.dongle.failed.follow([this] { switchOff(); })),
      sendFailed_(context.outside.engine.sendFailed.follow([this] { switchOff(); })) {
    const auto follow = [this, switched = std::move(switched)] {
        timer_.setEnabled(isOn());
        switched(isOn());
    };
    context.controls.onClick(names.on, follow);
    context.controls.onClick(names.off, follow);
    context.form.procedure(std::string(timerName) + "_Timer", std::move(read));
}

} // namespace bitlux
