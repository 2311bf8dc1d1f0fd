#pragma once

#include "platform/forms/control_array.h"
#include "platform/forms/controls.h"
#include "platform/forms/form.h"
#include "session/session.h"
#include "transfer/word_engine.h"

#include <cstdint>

namespace bitlux::zt72518 {

/// Puts a word of 16 bits into WordToSend in the packed form.
void pack(Session& session, std::uint8_t high, std::uint8_t low);
/// The same, and sends it; the answer stands in WordReceived.
void sendPacked(Session& session, WordEngine& engine, std::uint8_t high, std::uint8_t low);

/// The one way of the panel to the chip: words of 16 bits in the packed form, whole bytes in the
/// elements 8 (high) and 0 (low) of WordToSend; and the row of labels that shows the status byte
/// of the answer.
class ChipLink {
public:
    /// All outlive it.
    ChipLink(forms::Form& form, Session& session, WordEngine& engine);

    /// Sends a word; the answer stands in WordReceived.
    void send(std::uint8_t high, std::uint8_t low);
    /// Sends ZT72518WordHigh and ZT72518WordLow, and sums up the answer's bytes.
    void Send_SPI();
    /// The same with a word that is put there first; false when the link failed.
    bool exchange(std::uint16_t word);
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
    /// The link failed, or there is no bus that a word could go out on.
    [[nodiscard]] bool isOutOfReach() const {
        return session_.LinkFailed || (!session_.USBReady && !session_.ParallelPortReady);
    }

private:
    void show(int firstBit);
    [[nodiscard]] std::uint8_t receivedByte(int lowBit) const;

    Session& session_;
    WordEngine& engine_;

public:
    forms::ControlArray<forms::Label> Reg_W; ///< bits 0 to 15 of the answer
};

} // namespace bitlux::zt72518
