#pragma once

#include "chips/zt72518/registers.h"
#include "panels/common/panel_controls.h"
#include "panels/zt72518/chip_words.h"

#include <functional>
#include <span>

namespace bitlux::zt72518 {

/// The rows of flags, and the buttons that read or append whole groups of views.
class FlagPages {
public:
    /// All outlive it. `variant` tells the index of the selected opt_vb from 2 on.
    FlagPages(PanelControls& controls, ChipWords& words, const ChipLink& link,
              std::function<int()> variant);

private:
    using Steps = std::span<const oldchips::zt72518::ReadAllStep>;
    using Names = std::span<const oldchips::ControlName>;

    void addRow(const oldchips::zt72518::FlagRow& row, const oldchips::ControlName& read);
    void addAppend(const oldchips::zt72518::FlagRow& row, const oldchips::ControlName& name);
    void addGroups();
    void addReadGroup(const oldchips::ControlName& name, Steps steps, PanelControls::Action action);
    void addAppendGroup(const oldchips::ControlName& name, Names lines);
    void addGroup(const oldchips::ControlName& name, std::string_view caption,
                  const std::string& tooltip, PanelControls::Action action);
    void readAll(Steps steps) const;
    /// Gives up when the link has failed at the first word.
    void readAllWhileLinked(Steps steps) const;
    void appendAll(Names names) const;

    PanelControls& controls_;
    ChipWords& words_;
    const ChipLink& link_;
    std::function<int()> variant_;
};

} // namespace bitlux::zt72518
