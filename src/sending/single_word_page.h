#pragma once

#include "platform/desk.h"
#include "platform/forms/control_array.h"
#include "platform/forms/controls.h"
#include "platform/forms/form.h"
#include "sending/command_lists.h"
#include "sending/run_controls.h"
#include "sending/session_log.h"
#include "session/session.h"
#include "transfer/word_engine.h"

namespace bitlux {

/// The single-word page of the main form: one word, as bit buttons or hexadecimal text, and the
/// answer to it.
class SingleWordPage {
public:
    /// The dependencies of the page; all outlive it.
    struct Parts {
        Session& session;
        WordEngine& engine;
        SessionLog& log;
        RunControls& run;
        CommandLists& commands;
        MessageBoxes& boxes;
    };

    /// The bit rows hold this many bits; a longer word is handled in hexadecimal display only.
    static constexpr int bitColumns = 40;

    SingleWordPage(forms::Form& form, const Parts& parts);

    /// Sends the word of the page once: checks the log and the entry, sends, shows, logs. Every
    /// refusal shows its message and ends a continuous run. Returns whether an answer came.
    bool DoSPISingle();
    /// Copies the hexadecimal entry to SingleWordBits and pads it. False after a message, which
    /// also ends a continuous run; `whenEmpty` is the message for an empty entry.
    bool takeHexEntry(const char* whenEmpty);
    /// Adapts the page to SPIWordLength and DisplayHex; clears the word.
    void AdjustSPILabels();
    /// Sets the length of further words, as panels do; the word to send is rebuilt.
    void SetSpiWordLength(std::int16_t length);
    /// Shows the bit columns of the word, with its bits to send, and hides the others.
    void showBitColumns();

    void cmdSI_single_Click(int index);
    void cmdAll0Single_Click();
    void cmdAll1Single_Click();

private:
    [[nodiscard]] bool fits(const std::string& text);
    /// A bit of the word of the page; raises Failure (OutOfRange) when it has none of this number.
    [[nodiscard]] std::int16_t& bitOf(std::size_t index);
    void requireFit() const;
    void padHexEntry();
    void setSingleWordBitsFromHex();
    void setAllBits(std::int16_t bit);
    bool showAnswer();
    /// Shows a message and ends a continuous run.
    void refuse(const std::string& text);

    Parts parts_;
    Session& session_;

public:
    forms::Frame frameSPIinSingle;
    forms::Frame frameSPIoutSingle;
    forms::Label lblSItitle;
    forms::Label lblSOtitle;
    forms::ControlArray<forms::Button> cmdSI_single;
    forms::ControlArray<forms::Label> lblSO_single;
    forms::ControlArray<forms::Label> lblInBitsSingle;
    forms::ControlArray<forms::Label> lblOutBitsSingle;
    forms::Label lblHexDI;
    forms::TextBox txtHexWordToSend;
    forms::Label lblHexDO;
    forms::Label lblHexWordReceived;
    forms::Button cmdAll0Single;
    forms::Button cmdAll1Single;
};

} // namespace bitlux
