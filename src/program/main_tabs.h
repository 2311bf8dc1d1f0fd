#pragma once

#include "chips/chip_library.h"
#include "config/applied_shape.h"
#include "platform/forms/control_array.h"
#include "platform/forms/controls.h"
#include "platform/forms/form.h"
#include "sending/run_controls.h"
#include "session/session.h"

#include <cstdint>
#include <functional>
#include <string>
#include <vector>

namespace bitlux {

/// The tabs of the main form: two generic pages that are always there, after them a tab for each
/// part that the configuration enables, and after those a tab for each chip of a user that is
/// enabled and has a file. At most one page is visible.
class MainTabs {
public:
    /// The dependencies of the tabs; all outlive them.
    struct Parts {
        Session& session;
        RunControls& run;
        AppliedShape& shape;
        forms::Label& labelMainTitle;
        const chips::ChipLibrary& library;
    };

    MainTabs(forms::Form& form, const Parts& parts);

    // Set by the owner of the dongle and the panels.
    std::function<void()> startUsb;
    /// Shows the panel of a part, if it has one.
    std::function<void(std::int32_t partNumber)> showPanel = [](std::int32_t) {};
    /// Shows the panel of a user's chip.
    std::function<void(const std::string& chipName)> showUserPanel = [](const std::string&) {};

    /// Removes the part tabs and shows the first page. The tabs of users' chips stay.
    void ResetTabs();
    /// Whether a part has a tab.
    [[nodiscard]] bool IsTabActive(std::int32_t partNumber) const;
    /// The part whose tab is selected, 0 for other tabs.
    [[nodiscard]] std::int32_t selectedPart() const;
    /// The chip whose tab is selected, by its name; empty for other tabs. A part may have no file.
    [[nodiscard]] std::string selectedChip() const;
    /// The chips that have a tab, in the order of the tabs.
    [[nodiscard]] std::vector<std::string> chipTabs() const;
    /// Adds the tab of a part after the others, even when it has one. Four fit; one more, like an
    /// unknown part, raises Failure (OutOfRange).
    void addPartTab(std::int32_t partNumber);
    /// Removes the tabs of parts, and nothing else.
    void removePartTabs();

    /// Enables a chip of a user, which gets a tab after the others. No effect on an enabled one.
    /// Raises Failure (OutOfRange) with near names when no user has such a chip.
    void AddChipTab(const std::string& name);
    /// Shows the tab of a user's chip, if it has one.
    void selectChipTab(const std::string& name);
    /// Disables it. Raises Failure (OutOfRange) when it is not enabled.
    void RemoveChipTab(const std::string& name);
    /// Enables a chip as a configuration does: without a file it has no tab; returns false then.
    /// More than a hundred raise Failure (OutOfRange).
    bool enableChip(const std::string& name);
    void disableChips();

    void TabStripMain_Click();
    void ZT72518_windows_Click();
    void OpenZT72516Window_Click();
    void open_72537_Click();
    /// The panel of the chip whose tab is selected.
    void OpenChipPanel_Click();

private:
    /// The last tab that is not a user's chip.
    [[nodiscard]] int lastPartTab() const;
    [[nodiscard]] forms::Frame& pageOf(int tab);
    void removeChipTab(std::size_t position);
    void showGenericPage(int tab);
    void showPartPage(int tab);
    void showChipPage(int tab);
    void visit(std::int32_t partNumber, std::int16_t wordLength, std::int16_t type);

    Parts parts_;
    Session& session_;
    std::vector<std::string> chips_; ///< that have tabs, in their order

public:
    forms::TabStrip TabStripMain;
    forms::ControlArray<forms::Frame> FrameMain; ///< pages 1 to 7
    // On pages 4 to 7.
    forms::Button ZT72518_windows;
    forms::Button open_72361;
    forms::Button open_72537;
    forms::Button OpenZT72516Window;
    forms::Frame FrameChip; ///< page of the user's chip whose tab is selected
    forms::Button OpenChipPanel;
};

} // namespace bitlux
