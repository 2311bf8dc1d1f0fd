#include "program/word_names.h"

#include "chips/embedded_chips.h"
#include "panels/common/panel_form.h"
#include "platform/failure.h"

#include <algorithm>

namespace bitlux {

namespace {

/// Parts without a description have no names.
void dropUndescribed(std::vector<std::string>& names, const chips::ChipLibrary& library) {
    const auto embedded = chips::embeddedChips();
    std::erase_if(names, [&](const std::string& name) {
        return std::none_of(embedded.begin(), embedded.end(),
                            [&name](const auto& chip) { return chip.name == name; }) &&
               !library.isUsers(name);
    });
}

} // namespace

WordNames::WordNames(const Parts& parts) : parts_(parts) {
    parts_.forms.formShown.subscribe(
        [this](const forms::Form& form) { noteForm(form, form.visible()); });
    parts_.forms.formGoing.subscribe([this](const forms::Form& form) { noteForm(form, false); });
}

void WordNames::noteForm(const forms::Form& form, bool isShown) {
    const auto* panel = dynamic_cast<const PanelForm*>(&form);
    if (panel == nullptr)
        return;
    std::erase(panels_, panel->chip().name);
    if (isShown)
        panels_.push_back(panel->chip().name);
}

void WordNames::pick(const std::string& chip) {
    if (picked_ == chip)
        return;
    picked_ = chip;
    changed.raise();
}

std::string WordNames::current() const {
    const MainTabs& tabs = parts_.tabs();
    std::vector<std::string> selected{tabs.selectedChip()};
    dropUndescribed(selected, parts_.library);
    if (!selected.empty())
        return selected.front();
    if (!panels_.empty())
        return panels_.back();
    std::vector<std::string> all = tabs.chipTabs();
    dropUndescribed(all, parts_.library);
    return all.size() == 1 ? all.front() : std::string();
}

std::shared_ptr<const WordDecoder> WordNames::decoder() {
    const std::string wanted = chip();
    if (wanted != read_) {
        read_ = wanted;
        known_.reset();
        problem_.clear();
        if (!wanted.empty())
            try {
                known_ = std::make_shared<const Known>(parts_.library.refreshed(wanted));
            } catch (const Failure& failure) {
                problem_ = failure.what();
            }
    }
    return known_ ? std::shared_ptr<const WordDecoder>(known_, &known_->decoder) : nullptr;
}

} // namespace bitlux
