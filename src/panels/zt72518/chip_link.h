#pragma once

#include "panels/zt72518/panel_variables.h"
#include "platform/forms/control_array.h"
#include "platform/forms/controls.h"
#include "platform/forms/form.h"
#include "session/session.h"
#include "transfer/word_engine.h"

#include <cstdint>

namespace bitlux::zt72518 {

/// Sends a word of 16 bits in the packed form; the answer stands in WordReceived.
void sendPacked(Session& session, WordEngine& engine, std::uint8_t high, std::uint8_t low);

/// The one way of the panel to the chip: words of 16 bits in the packed form, whole bytes in the
/// elements 8 (high) and 0 (low) of WordToSend; and the row of labels that shows the status byte
/// of the answer.
class ChipLink {
public:
    /// All outlive it.
    ChipLink(forms::Form& form, Session& session, WordEngine& engine, PanelVariables& variables);

    /// Sends a word; the answer stands in WordReceived.
    void send(std::uint8_t high, std::uint8_t low);
    /// Sends ZT72518WordHigh and ZT72518WordLow, and sums up the answer's bytes.
    void Send_SPI();
    /// Sends (high byte, 00) or (high byte, 80) and shows the status byte of the answer.
    void ReadLowWord(std::uint8_t high);
    void ReadHighWord(std::uint8_t high);
    /// Shows all sixteen bits of the answer.
    void Update_Miso_Write();
    /// Shows the status byte; the labels 7 to 0 stay.
    void Update_Miso_Read();

    /// Element i of WordReceived, false beyond its end.
    [[nodiscard]] bool received(int bit) const;
    /// Bits 7 to 0, or 15 to 8, of the answer.
    [[nodiscard]] std::uint8_t replyLow() const;
    [[nodiscard]] std::uint8_t replyHigh() const;
    [[nodiscard]] bool linkFailed() const { return session_.LinkFailed; }

private:
    void show(int firstBit);

    Session& session_;
    WordEngine& engine_;
    PanelVariables& variables_;

public:
    forms::ControlArray<forms::Label> Reg_W; ///< bits 0 to 15 of the answer
};

} // namespace bitlux::zt72518
