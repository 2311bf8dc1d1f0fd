#pragma once

#include "chips/description.h"
#include "panels/common/panel_controls.h"
#include "panels/common/panel_form.h"
#include "panels/common/panel_words.h"
#include "panels/common/read_alls.h"
#include "panels/common/register_pages.h"
#include "platform/forms/form.h"

#include <functional>
#include <string>

namespace bitlux {

/// A form beside a chip's panel, made from the description: the registers, views and buttons that
/// name it. Its words are sent as those of the panel, which is notified. It sets the panel's word
/// shape when it is loaded and when it comes to the front, and does not restore the old one.
class CompanionForm : public forms::Form {
public:
    /// `panel` returns the panel, which may be a different object each time; `outside` outlives the
    /// form.
    CompanionForm(forms::FormSet& set, const std::string& name, chips::ChipPtr chip,
                  const PanelSurroundings& outside, std::function<PanelForm&()> panel);

    [[nodiscard]] const chips::Chip& chip() const { return *chip_; }

private:
    const chips::ChipPtr chip_;
    const std::function<PanelForm&()> panel_;

public:
    PanelControls pageControls;
    PanelWords words;
    RegisterPages registers;

private:
    ReadAlls readAlls_;
};

} // namespace bitlux
