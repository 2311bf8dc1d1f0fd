#pragma once

#include "panels/common/sequence_lists.h"
#include "panels/zt72518/chip_link.h"
#include "panels/zt72518/panel_variables.h"
#include "platform/desk.h"
#include "platform/forms/control_array.h"
#include "platform/forms/controls.h"
#include "session/session.h"
#include "transfer/dongle_link.h"

#include <functional>
#include <optional>
#include <string>
#include <string_view>

namespace bitlux::zt72518 {

/// The watchdog that the dongle serves: its mode and time, its pulse of current, and the buttons
/// that start it, stop it, and put either into the sequence.
class Watchdog {
public:
    /// What it works with; all outlive it.
    struct Parts {
        Session& session;
        PanelVariables& variables;
        ChipLink& link;
        DongleLink& dongle;
        SequenceLists& sequence;
        MessageBoxes& boxes;
    };

    Watchdog(forms::Form& form, const Parts& parts);

    /// The number of a time in the list of times, nothing for any other text.
    static std::optional<int> timeNumber(std::string_view text);
    /// The number of a mode, nothing for any other text.
    static std::optional<int> modeNumber(std::string_view text);

    /// Sends what is requested, if there is a dongle; of a stop and a start by a sequence the start
    /// wins.
    void send_wd();
    /// Starts or stops the pulse of current, as WdCurrentOn tells.
    void send_wd_current();
    /// Takes the time of a line of the sequence; any other text leaves the one there was.
    void decod_wd_time(int line);
    /// A line of the sequence starts a mode.
    void startBySequence(int mode, int line);

    /// Writes the edited value into the sequence. Set by whoever owns the editor.
    std::function<void()> changeValue;
    /// save_log, while commands are stored. Set by whoever owns the store.
    std::function<void(const std::string& command, const std::string& value)> store;

private:
    void watchdog_Click(int index);
    void start();
    void stop();
    void startCurrent();
    void stopCurrent();
    void refreshOnce();
    void showTime();
    void showState(bool on);
    void note(const std::string& command, const std::string& value = {});

    Parts parts_;
    PanelVariables& variables_;

public:
    forms::ControlArray<forms::ComboBox> wd_config; ///< mode, time, low time, time of a line
    forms::ScrollBar wd_current_time;               ///< high time in ms
    forms::ControlArray<forms::Label> wd_aff;       ///< 0 the high time, 1 whether it is on
    forms::ControlArray<forms::Label> wd_refresh;   ///< captions of the mode and of the time
    forms::ControlArray<forms::Button> watchdog;
};

} // namespace bitlux::zt72518
