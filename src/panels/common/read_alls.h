#pragma once

#include "chips/description.h"
#include "panels/common/panel_controls.h"
#include "session/session.h"

#include <functional>
#include <string>

namespace bitlux {

/// Makes the buttons that press other buttons one after the other.
class ReadAlls {
public:
    /// All outlive it. The buttons that are pressed are there. `variant` tells the title of the
    /// variant that is chosen.
    ReadAlls(const chips::Chip& chip, PanelControls& controls, const Session& session,
             std::function<std::string()> variant);

private:
    void press(const chips::ReadAll& group) const;

    PanelControls& controls_;
    const Session& session_;
    std::function<std::string()> variant_;
};

} // namespace bitlux
