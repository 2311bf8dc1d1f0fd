#pragma once

#include "platform/forms/control_array.h"
#include "platform/forms/controls.h"
#include "platform/forms/form.h"
#include "sending/run_controls.h"
#include "session/session.h"

#include <cstdint>
#include <functional>
#include <string>

namespace bitlux {

/// The tabs of the main form: two generic pages that are always there, and behind them a tab for
/// each part that the configuration enables. At most one page is visible.
class MainTabs {
public:
    /// What the tabs work with; all outlive them.
    struct Parts {
        Session& session;
        RunControls& run;
        forms::Label& labelMainTitle;
    };

    MainTabs(forms::Form& form, const Parts& parts);

    // Set by whoever owns the dongle and the panels.
    std::function<void()> startUsb;
    /// Shows the panel of a part, if it has one.
    std::function<void(std::int32_t partNumber)> showPanel = [](std::int32_t) {};

    /// Removes the part tabs and shows the first page.
    void ResetTabs();
    /// Whether a part has a tab.
    [[nodiscard]] bool IsTabActive(std::int32_t partNumber) const;
    /// Adds the tab of a part behind the others, even when it has one. Four find room; one more,
    /// like an unknown part, raises Failure (OutOfRange).
    void addPartTab(std::int32_t partNumber);
    /// Removes the tabs of parts, and nothing else.
    void removePartTabs();

    void TabStripMain_Click();
    void ZT72518_windows_Click();
    void OpenZT72516Window_Click();
    void open_72537_Click();

private:
    [[nodiscard]] forms::Frame& pageOf(int tab) const;
    void showGenericPage(int tab);
    void showPartPage(int tab);
    void visit(std::int32_t partNumber, std::int16_t wordLength, std::int16_t type);

    Parts parts_;
    Session& session_;

public:
    forms::TabStrip TabStripMain;
    forms::ControlArray<forms::Frame> FrameMain; ///< pages 1 to 7
    // On pages 4, 6 and 7.
    forms::Button ZT72518_windows;
    forms::Button open_72537;
    forms::Button OpenZT72516Window;
};

} // namespace bitlux
