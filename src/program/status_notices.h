#pragma once

#include "platform/forms/form.h"

#include <functional>
#include <optional>
#include <string>
#include <utility>
#include <vector>

namespace bitlux {

/// The notice beside the bus in the status line: a sentence, and a button that helps.
struct Notice {
    std::string text;           ///< without a full stop
    std::string button = {};    ///< caption; no button when it is empty
    std::string procedure = {}; ///< of the main form, which the button calls
};

/// The notices of the main form. Each source is queried at every access, so that no notice outlives
/// its reason. Scripts read the current one as the variable StatusNotice of the form, empty for
/// none.
class StatusNotices {
public:
    /// Returns nothing while there is no notice.
    using Source = std::function<std::optional<Notice>()>;

    explicit StatusNotices(forms::Form& form);

    /// Sources that were added first have priority.
    void add(Source source) { sources_.push_back(std::move(source)); }
    /// The current one.
    [[nodiscard]] std::optional<Notice> now() const;
    /// Presses its button; a failure is shown in a box. No effect without a notice.
    void press();

private:
    forms::Form& form_;
    std::vector<Source> sources_;
};

} // namespace bitlux
