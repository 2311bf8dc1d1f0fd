#pragma once

#include "platform/forms/form.h"

#include <functional>
#include <optional>
#include <string>
#include <utility>
#include <vector>

namespace bitlux {

/// What the status line tells beside the bus: a sentence, and a button that helps.
struct Notice {
    std::string text;           ///< without a full stop
    std::string button = {};    ///< caption; no button when it is empty
    std::string procedure = {}; ///< of the main form, which the button calls
};

/// The notices of the main form. Each is looked for when somebody asks, so that none outlives its
/// reason. Scripts read the one in force as the variable StatusNotice of the form, empty for none.
class StatusNotices {
public:
    /// Nothing while there is nothing to tell.
    using Source = std::function<std::optional<Notice>()>;

    explicit StatusNotices(forms::Form& form);

    /// Those that were added first go first.
    void add(Source source) { sources_.push_back(std::move(source)); }
    /// The one in force.
    [[nodiscard]] std::optional<Notice> now() const;
    /// Presses its button; a failure ends in a box. Nothing without one.
    void press();

private:
    forms::Form& form_;
    std::vector<Source> sources_;
};

} // namespace bitlux
