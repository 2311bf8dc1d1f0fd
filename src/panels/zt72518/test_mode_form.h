#pragma once

#include "panels/common/panel_words.h"
#include "panels/zt72518/test_words.h"
#include "platform/desk.h"
#include "platform/forms/control_array.h"
#include "platform/forms/controls.h"
#include "platform/forms/form.h"
#include "session/session.h"
#include "transfer/dongle_link.h"
#include "transfer/word_engine.h"

#include <array>
#include <cstdint>
#include <optional>
#include <string>

namespace bitlux::zt72518 {

/// The form "TestMode": routes internal thresholds and flags to pins, starts scan tests, and trims
/// oscillator and bias, with or without burning fuses.
class TestModeForm : public forms::Form {
public:
    /// The dependencies; all outlive it. The chip's file describes the layout of the form.
    struct Parts {
        chips::ChipPtr chip; ///< of the family
        Session& session;
        WordEngine& engine;
        DongleLink& dongle;
        MessageBoxes& boxes;
    };

    TestModeForm(forms::FormSet& set, const Parts& parts);

    /// The layout of the controls in the window.
    [[nodiscard]] const chips::Sheet& sheet() const { return *parts_.chip->sheetOf(name()); }

    /// Sends both words of TestWords, in the given type or else in the chip's.
    void Send_SPI(std::optional<std::int16_t> type = {});
    void can_lin_Click(int index);
    void thres_combox_Click();
    void thres_send_Click();
    void term_send_Click();
    void trim_send_Click();
    /// Commands the dongle to burn the fuses in the elements 8 and 0 of WordToSend, with data out
    /// low for the time of trimming_txd, and waits for it without limit. Does nothing without a
    /// dongle.
    void send_trimming();
    void tests_send_Click(int index);

private:
    /// Tooltips of the buttons: their words.
    void showWords();
    void choose(TestCommand command, std::uint8_t second = 0);
    void sendFirstWord(std::optional<std::int16_t> type = {});
    /// The word that begins at a position of TestWords.
    [[nodiscard]] std::uint64_t wordIn(std::size_t place) const;
    [[nodiscard]] Trimming trimming() const;
    void showTxd(bool burns);
    void showTxdTime();
    void buildPattern();
    /// The byte in Text1; nothing for an invalid text.
    [[nodiscard]] std::optional<std::uint8_t> pattern() const;
    void sendPattern();

    Parts parts_;
    PanelWords words_;

public:
    /// High and low byte of the first and of the second word.
    std::array<std::uint8_t, 4> TestWords{testWordHigh, 0, secondTestWordHigh, 0};

    forms::Button enter_test_mode;
    forms::ControlArray<forms::Button> can_lin;
    forms::ControlArray<forms::Label> can_lin_lbl;
    forms::ComboBox thres_combox;
    forms::ControlArray<forms::Label> thres_lbl;
    forms::Button thres_send;
    forms::OptionGroup termConditions;
    forms::ControlArray<forms::OptionButton> term_cond;
    forms::Button term_send;
    forms::OptionGroup trimVersions;
    forms::OptionGroup trimVolts;
    forms::OptionGroup trimOscillators;
    forms::OptionGroup trimBiases;
    forms::OptionGroup trimLins;
    forms::OptionGroup trimFuses;
    forms::ControlArray<forms::OptionButton> trim_version;
    forms::ControlArray<forms::OptionButton> trim_volt;
    forms::ControlArray<forms::OptionButton> trim_osci;
    forms::ControlArray<forms::OptionButton> trim_bias;
    forms::ControlArray<forms::OptionButton> trim_lin;
    forms::ControlArray<forms::OptionButton> trim_fuse;
    forms::ScrollBar trimming_txd;
    forms::ControlArray<forms::Label> trimmingLabels; ///< "trimming"
    forms::Button trim_send;
    forms::ControlArray<forms::Button> tests_send;

    // The pattern: a byte as eight binary digits in Text1, bit 7 first. The other three controls
    // write their bits into it, and its content is sent.
    forms::CheckBox bit_6;
    forms::ComboBox periph_dec;       ///< bits 5 to 3
    forms::ComboBox periph_scan_list; ///< bits 2 to 0
    forms::TextBox Text1;
};

} // namespace bitlux::zt72518
