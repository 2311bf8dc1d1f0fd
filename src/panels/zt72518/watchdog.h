#pragma once

#include "panels/common/command_store.h"
#include "panels/common/panel_part.h"
#include "panels/common/service_note.h"
#include "panels/zt72518/chip_words.h"
#include "platform/forms/control_array.h"

#include <array>
#include <optional>
#include <string>
#include <string_view>

namespace bitlux::zt72518 {

/// The watchdog that the dongle serves: its mode and time, its pulse of current, and the buttons
/// that start it, stop it, and append either to the sequence.
class Watchdog : public PanelPart {
public:
    explicit Watchdog(const PanelContext& context);

    /// The number of a time in the list of times, nothing for any other text.
    static std::optional<int> timeNumber(std::string_view text);
    /// The number of a mode, nothing for any other text.
    static std::optional<int> modeNumber(std::string_view text);

    /// Sends what is requested, if there is a dongle. A start by a sequence overrides a stop.
    void send_wd();
    /// Starts or stops the pulse of current, depending on WdCurrentOn.
    void send_wd_current();
    /// Takes the time of a line of the sequence; any other text keeps the previous time.
    void decod_wd_time(int line);
    /// Starts a mode for a line of the sequence.
    void startBySequence(int mode, int line);

private:
    struct Press;
    static const std::array<Press, 16> presses;

    void watchdog_Click(int index);
    bool commandDongle(const UsbFrame& frame);
    void change() { form_.call("ChangeValue"); }
    void appendStart() { sequence_.append(wd_config(0).text(), wd_config(1).text()); }
    void start();
    void stop();
    void startCurrent();
    void stopCurrent();
    void refreshOnce();
    void showTime();
    void showState(bool on);

    forms::Form& form_;
    Session& session_;
    DongleLink& dongle_;
    MessageBoxes& boxes_;
    SequenceLists& sequence_;
    ChipWords& words_;
    CommandStore& store_;
    ServiceNote note_;

public:
    forms::ControlArray<forms::ComboBox> wd_config; ///< mode, time, low time, time of a line
    forms::ScrollBar wd_current_time;               ///< high time in ms
    forms::ControlArray<forms::Label> wd_aff;       ///< 0 the high time, 1 the state
    forms::ControlArray<forms::Label> wd_refresh;   ///< captions of the mode and of the time
    forms::ControlArray<forms::Button> watchdog;
};

} // namespace bitlux::zt72518
