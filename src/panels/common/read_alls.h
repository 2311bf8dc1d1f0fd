#pragma once

#include "chips/description.h"
#include "panels/common/panel_controls.h"
#include "panels/common/register_pages.h"
#include "session/session.h"

#include <functional>
#include <string>

namespace bitlux {

/// Makes the buttons that press other buttons one after the other, or read views.
class ReadAlls {
public:
    /// All outlive it. The buttons that are pressed exist already, on the companion form that
    /// `form` names, or on the panel. `variant` returns the title of the selected variant.
    ReadAlls(const chips::Chip& chip, PanelControls& controls, RegisterPages& pages,
             const Session& session, std::function<std::string()> variant,
             const std::string& form = {});

private:
    void press(const chips::ReadAll& group) const;
    void take(const chips::ReadAll& group, const chips::ReadAll::Step& step) const;

    const chips::Chip& chip_;

    PanelControls& controls_;
    RegisterPages& pages_;
    const Session& session_;
    std::function<std::string()> variant_;
};

} // namespace bitlux
