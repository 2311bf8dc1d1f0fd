#include "panels/zt72518/flag_pages.h"

#include "chips/zt72518/flags.h"
#include "panels/common/colours.h"

#include <string>
#include <utility>
#include <vector>

namespace bitlux::zt72518 {

namespace chip = oldchips::zt72518;

namespace {

constexpr const char* appendCaption = ">SEQ";
constexpr int safeResetRow = 4; ///< the one high row whose >SEQ stands among the low ones
constexpr int safeResetAppend = 7;

} // namespace

FlagPages::FlagPages(PanelControls& controls, ChipWords& words, const ChipLink& link,
                     std::function<int()> variant)
    : controls_(controls), words_(words), link_(link), variant_(std::move(variant)) {
    for (int i = 0; const chip::FlagRow& row : chip::lowFlagRows) {
        addRow(row, {"Cm_RFl", i});
        addAppend(row, {"Seq_RFl", i++});
    }
    for (int i = 0; const chip::FlagRow& row : chip::highFlagRows) {
        addRow(row, {"Cm_RFh", i});
        addAppend(row, i == safeResetRow ? oldchips::ControlName{"Seq_RFl", safeResetAppend}
                                         : oldchips::ControlName{"Seq_RFh", i});
        ++i;
    }
    addGroups();
}

void FlagPages::addRow(const chip::FlagRow& row, const oldchips::ControlName& read) {
    const LabelRow& labels = controls_.addRow(row.labels, row.captions, row.firstLabel);
    controls_.addButton(read, row.title).setTooltip(ChipWords::flagText(row));
    controls_.onClick(
        read, [this, &row, &labels] { labels.show(words_.readFlags(row), stripedLitColour); });
}

void FlagPages::addAppend(const chip::FlagRow& row, const oldchips::ControlName& name) {
    controls_.addButton(name, appendCaption).setTooltip(std::string(row.sequenceName));
    controls_.onClick(
        name, [this, &row] { words_.append(std::string(row.sequenceName), flagLineValue(row)); });
}

void FlagPages::addGroups() {
    addReadGroup({"Cm_ReadAll_Rl", 0}, chip::readAllLow, [this] { readAll(chip::readAllLow); });
    addGroup({"Cm_ReadAll_Rl", 1}, "General Flags", ChipWords::generalFlagsText(),
             [this] { words_.readGeneralFlags(); });
    addAppendGroup({"Cm_ReadAll_Rl", 2}, chip::sequenceAllLow);
    addReadGroup({"Cm_ReadAll_Rh"}, chip::readAllHigh,
                 [this] { readAllWhileLinked(chip::readAllHigh); });
    addAppendGroup({"Seq_All_Rh"}, chip::sequenceAllHigh);
    addReadGroup({"Cm_ReadAll_RFl"}, chip::readAllFlags,
                 [this] { readAllWhileLinked(chip::readAllFlags); });
    addAppendGroup({"Seq_All_RFl"}, chip::sequenceAllFlags);
}

void FlagPages::addReadGroup(const oldchips::ControlName& name, Steps steps,
                             PanelControls::Action action) {
    std::vector<oldchips::ControlName> buttons;
    for (const chip::ReadAllStep& step : steps)
        buttons.push_back(step.button);
    addGroup(name, "Read all", controls_.tooltips(buttons), std::move(action));
}

void FlagPages::addAppendGroup(const oldchips::ControlName& name, Names lines) {
    addGroup(name, ">All", controls_.tooltips(lines), [this, lines] { appendAll(lines); });
}

void FlagPages::addGroup(const oldchips::ControlName& name, std::string_view caption,
                         const std::string& tooltip, PanelControls::Action action) {
    controls_.addButton(name, caption).setTooltip(tooltip);
    controls_.onClick(name, std::move(action));
}

void FlagPages::readAll(Steps steps) const {
    const unsigned variant = 1U << variant_();
    for (const chip::ReadAllStep& step : steps)
        if ((step.variants & variant) != 0)
            controls_.run(step.button);
}

void FlagPages::readAllWhileLinked(Steps steps) const {
    readAll(steps.first(1));
    if (!link_.linkFailed())
        readAll(steps.subspan(1));
}

void FlagPages::appendAll(Names names) const {
    for (const oldchips::ControlName& name : names)
        controls_.run(name);
}

} // namespace bitlux::zt72518
