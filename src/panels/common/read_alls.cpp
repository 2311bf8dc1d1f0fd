#include "panels/common/read_alls.h"

#include <algorithm>
#include <utility>
#include <vector>

namespace bitlux {

ReadAlls::ReadAlls(const chips::Chip& chip, PanelControls& controls, const Session& session,
                   std::function<std::string()> variant)
    : controls_(controls), session_(session), variant_(std::move(variant)) {
    for (const chips::ReadAll& group : chip.readAlls) {
        std::vector<chips::ControlName> buttons;
        for (const chips::ReadAll::Step& step : group.steps)
            buttons.push_back(step.button);
        controls.addButton(group.button, group.title).setTooltip(controls.tooltips(buttons));
        controls.onClick(group.button, [this, &group] { press(group); });
    }
}

void ReadAlls::press(const chips::ReadAll& group) const {
    using Failure = chips::ReadAll::Failure;
    const std::string variant = variant_();
    for (std::size_t i = 0; i < group.steps.size(); ++i) {
        const bool ends =
            group.failure == Failure::Ends || (group.failure == Failure::EndsAfterFirst && i == 1);
        if (i > 0 && ends && session_.LinkFailed)
            return;
        const chips::ReadAll::Step& step = group.steps[i];
        if (step.variants.empty() ||
            std::find(step.variants.begin(), step.variants.end(), variant) != step.variants.end())
            controls_.run(step.button);
    }
}

} // namespace bitlux
