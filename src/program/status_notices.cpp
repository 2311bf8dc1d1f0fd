#include "program/status_notices.h"

#include "platform/forms/form_set.h"

#include <fmt/format.h>

namespace bitlux {

StatusNotices::StatusNotices(forms::Form& form) : form_(form) {
    form.variable("StatusNotice",
                  [this] {
                      const std::optional<Notice> notice = now();
                      return forms::toValue(notice ? notice->text : std::string());
                  },
                  {});
}

std::optional<Notice> StatusNotices::now() const {
    for (const Source& source : sources_)
        if (std::optional<Notice> notice = source())
            return notice;
    return {};
}

void StatusNotices::press() {
    const std::optional<Notice> notice = now();
    if (!notice || notice->procedure.empty())
        return;
    form_.set().perform(fmt::format("{}.{}", form_.name(), notice->procedure),
                        [&] { form_.call(notice->procedure); });
}

} // namespace bitlux
