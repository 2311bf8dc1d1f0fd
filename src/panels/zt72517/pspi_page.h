#pragma once

#include "platform/desk.h"
#include "platform/event.h"
#include "platform/forms/control_array.h"
#include "platform/forms/controls.h"
#include "platform/forms/form.h"
#include "platform/forms/timer.h"
#include "session/session.h"
#include "transfer/dongle_link.h"

#include <array>
#include <cstdint>
#include <functional>
#include <initializer_list>
#include <string>

namespace bitlux::zt72517 {

/// A row of flags, and the button that reads them with one command of the chip.
struct FlagLine {
    FlagLine(forms::Form& form, const char* name, std::uint8_t readCommand, int first,
             std::initializer_list<const char*> captions);

    std::uint8_t command;                    ///< the command byte
    forms::ControlArray<forms::Label> flags; ///< by their bits
    forms::Button read;
};

/// The page of the main form for the ZT72517: its two lines, its configuration byte, and its flags,
/// over the dongle's byte-wide link. A frame waits for its answer while the event loop runs;
/// handlers that would send another one meanwhile do nothing. Without a dongle nothing is sent and
/// nothing changes.
class PspiPage {
public:
    /// The dependencies; all outlive it.
    struct Parts {
        Session& session;
        DongleLink& dongle;
        MessageBoxes& boxes;
        EventLoop& loop;
        const forms::TabStrip& tabs;
        std::function<std::int32_t()> selectedPart; ///< part whose tab is selected, or 0
    };

    PspiPage(forms::Form& form, Parts parts);

    /// Sends SingleWordBits(0), or a change of the lines; USBReadDone says whether an answer
    /// arrived.
    void SendPSPI();
    /// Sends the levels of the lines in PSPIMode.
    void chg_state();
    /// Sends the configuration byte.
    void slr_opt();
    /// Colours a row of flags, 1 to 4, by the captions of bit_read.
    void decod_flag(int number);
    void ShowPSPIBits(std::uint8_t reply);

    void mode_Click(int index);
    void opt_valid_Click();
    void send_pspi_Click();
    void auto_opt_Click();
    void HScroll1_Change();
    void timer_flag_Timer();

private:
    void registerProcedures(forms::Form& form);
    [[nodiscard]] bool canSend() const { return parts_.session.USBReady && !waits_; }
    bool transfer(int byte);
    /// The same, and keeps the answer.
    bool transferByte(int byte);
    bool readFlags(int number);
    void showCanFailure();
    /// The configuration byte of the selected options.
    [[nodiscard]] int configuration() const;
    void showConfiguration(int byte);
    [[nodiscard]] const FlagLine& line(int number) const;

    Parts parts_;
    Session& session_;
    UsbFrame answer_{};
    bool waits_ = false;     ///< for an answer, or while the message of a missing answer is open
    bool adjusting_ = false; ///< options are being reset
    int sent_ = 32;          ///< configuration byte, initially that of the selected options
    forms::OptionGroup nstbGroup_;
    forms::OptionGroup enGroup_;
    forms::OptionGroup slewRateGroup_;
    forms::OptionGroup autoGroup_;

public:
    forms::Frame etat;
    forms::ControlArray<forms::Button> mode;
    forms::Frame frame_nstb;
    forms::ControlArray<forms::OptionButton> opt_nstb;
    forms::Frame frame_en;
    forms::ControlArray<forms::OptionButton> opt_en;
    forms::Button opt_valid;
    forms::CheckBox can_wu_opt;
    forms::CheckBox crank_opt;
    forms::CheckBox nerr_opt;
    forms::Frame frame_sr;
    forms::ControlArray<forms::OptionButton> sr_opt;
    forms::Label TextHexPSPI;
    forms::TextBox byte_to_send;
    forms::Button send_pspi;
    forms::Label label_bit_read;
    forms::ControlArray<forms::Label> bit_read;
    std::array<FlagLine, 4> flagLines;
    forms::Label can_fail_text;
    forms::ControlArray<forms::OptionButton> auto_opt;
    forms::ScrollBar HScroll1; ///< milliseconds between two refreshes
    forms::Label refresh_aff;
    forms::ControlArray<forms::Label> Label2;
    forms::Timer timer_flag;

private:
    Subscription linkFailed_;
};

} // namespace bitlux::zt72517
