#include "panels/common/service_note.h"

namespace bitlux {

ServiceNote::ServiceNote(const PanelContext& context)
    : WatchdogDongle(context.form, "WatchdogDongle", "The dongle that served it is gone"),
      link_(context.outside.dongle),
      presence_(context.outside.dongle.presenceChanged.follow([this] { show(); })) {
    WatchdogDongle.hide();
}

void ServiceNote::commanded(bool serves, bool answered) {
    serves_ = serves;
    losses_ = answered ? std::optional(link_.losses()) : std::nullopt;
    show();
}

void ServiceNote::show() {
    WatchdogDongle.setCaption(link_.isPresent() ? "The dongle serves it no more: start it again"
                                                : "The dongle that served it is gone");
    WatchdogDongle.setVisible(serves_ && losses_ != link_.losses());
}

} // namespace bitlux
