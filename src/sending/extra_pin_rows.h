#pragma once

#include "platform/desk.h"
#include "platform/forms/control_array.h"
#include "platform/forms/controls.h"
#include "platform/forms/form.h"
#include "sending/command_lists.h"
#include "sending/run_controls.h"
#include "sending/session_log.h"
#include "sending/single_word_page.h"
#include "session/session.h"
#include "transfer/pin_layer.h"
#include "transfer/word_engine.h"

#include <array>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace bitlux {

/// The extra pins on the main form: nine rows that Apply fills, from the top, with the pins that
/// are enabled. A row sets its pin at once, or adds a line that does so to the commands to send.
class ExtraPinRows {
public:
    /// The dependencies of the rows; all outlive them.
    struct Parts {
        Session& session;
        PinLayer& pins;
        const WordEngine& engine;
        SessionLog& log;
        RunControls& run;
        CommandLists& commands;
        SingleWordPage& singleWord;
        MessageBoxes& boxes;
    };

    static constexpr int rowCount = 9;

    ExtraPinRows(forms::Form& form, const Parts& parts);

    /// Shows a row for each name, at most rowCount, and hides the remaining rows.
    void fill(const std::vector<std::string>& names);
    /// Whether a visible row has this name.
    [[nodiscard]] bool has(std::string_view name) const;

    void cmdToggleHigh_Click(int index);
    void cmdToggleLow_Click(int index);
    void optSetHighNow_Click(int index) { setNow(index, true); }
    void optSetLowNow_Click(int index) { setNow(index, false); }

    /// A click on a tab of either strip shows its page, the log or the pins, in place of the other.
    void TabStripLogPins_Click();
    void TabStripLogPinsNow_Click();

private:
    void showRow(int row, const std::string& name);
    void addCommand(const std::string& line);
    void setNow(int index, bool high);
    bool setOnDongle(int index, bool high);
    bool setOnPort(const std::string& name, bool high);

    Parts parts_;
    Session& session_;
    std::array<forms::OptionGroup, rowCount> groups_;

public:
    forms::TabStrip TabStripLogPins;    ///< on the Batch page
    forms::TabStrip TabStripLogPinsNow; ///< on the single-word page
    forms::ControlArray<forms::Label> lblPinName;
    forms::ControlArray<forms::Button> cmdToggleHigh;
    forms::ControlArray<forms::Button> cmdToggleLow;
    forms::ControlArray<forms::Label> lblSetNow;
    forms::ControlArray<forms::OptionButton> optSetHighNow;
    forms::ControlArray<forms::OptionButton> optSetLowNow;
};

} // namespace bitlux
