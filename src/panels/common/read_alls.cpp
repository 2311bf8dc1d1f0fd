#include "panels/common/read_alls.h"

#include <algorithm>
#include <utility>
#include <vector>

#include <fmt/format.h>
#include <fmt/ranges.h>

namespace bitlux {

ReadAlls::ReadAlls(const chips::Chip& chip, PanelControls& controls, RegisterPages& pages,
                   const Session& session, std::function<std::string()> variant,
                   const std::string& form)
    : chip_(chip),
      controls_(controls),
      pages_(pages),
      session_(session),
      variant_(std::move(variant)) {
    for (const chips::ReadAll& group : chip.readAlls) {
        if (group.form != form)
            continue;
        std::vector<std::string> words;
        for (const chips::ReadAll::Step& step : group.steps)
            words.push_back(step.row.exists() ? pages.tooltip(*viewOf(chip, group, step))
                                              : controls.find(step.button)->tooltip());
        controls.addButton(group.button, group.title)
            .setTooltip(fmt::format("{}", fmt::join(words, ", ")));
        controls.onClick(group.button, [this, &group] { press(group); });
    }
}

void ReadAlls::take(const chips::ReadAll& group, const chips::ReadAll::Step& step) const {
    if (!step.row.exists())
        controls_.run(step.button);
    else if (const chips::View* view = viewOf(chip_, group, step))
        pages_.read(*view);
}

void ReadAlls::press(const chips::ReadAll& group) const {
    using OnFailure = chips::ReadAll::Failure;
    const std::string variant = variant_();
    for (std::size_t i = 0; i < group.steps.size(); ++i) {
        const bool ends = group.failure == OnFailure::Ends ||
                          (group.failure == OnFailure::EndsAfterFirst && i == 1);
        if (i > 0 && ends && session_.LinkFailed)
            return;
        const chips::ReadAll::Step& step = group.steps[i];
        if (step.variants.empty() ||
            std::find(step.variants.begin(), step.variants.end(), variant) != step.variants.end())
            take(group, step);
        if (group.failure == OnFailure::EndsUnanswered && !session_.WordAnswered)
            return;
    }
}

} // namespace bitlux
