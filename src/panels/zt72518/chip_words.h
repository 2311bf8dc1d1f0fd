#pragma once

#include "panels/common/panel_part.h"

#include <cstdint>

namespace bitlux::zt72518 {

/// The peculiarities of the words of the family: the parity bit of a write, the read bit of all
/// others, and the variables and procedures by which scripts send words of their own.
///
/// The last computed parity is added to every write, even after parity was turned off again.
class ChipWords : public PanelPart {
public:
    static constexpr std::uint8_t highViewByte = 0x80;

    explicit ChipWords(const PanelContext& context);

    void load() override;

    /// Sets ParityBit so that data and parity together have an odd number of ones.
    void ParityOfWordLow(std::uint8_t data);
    /// Sends a word unchanged; the answer is in WordReceived.
    void send(std::uint8_t high, std::uint8_t low);
    /// Sends ZT72518WordHigh and ZT72518WordLow, and computes the bytes of the answer.
    void Send_SPI();
    /// Sets these two variables and does the same; false when the link failed.
    bool exchange(std::uint16_t word);

    /// Bits 7 to 0, or 15 to 8, of the answer.
    [[nodiscard]] std::uint8_t replyLow() const { return words_.answerByte(0); }
    [[nodiscard]] std::uint8_t replyHigh() const { return words_.answerByte(8); }
    [[nodiscard]] bool linkFailed() const { return session_.LinkFailed; }
    /// The link failed, or there is no bus.
    [[nodiscard]] bool isOutOfReach() const {
        return session_.LinkFailed || (!session_.USBReady && !session_.ParallelPortReady);
    }

    // Variables of the form
    std::int16_t BitIndex = 0;    ///< for scripts; not used here
    std::uint8_t WordLowByte = 0; ///< data byte being built
    bool SPIParityEnabled = false;
    std::uint8_t ParityBit = 0;
    std::int16_t ReadBit = 1; ///< bit 8 of every read

private:
    [[nodiscard]] std::uint64_t adjusted(PanelWords::Purpose purpose, const chips::Register* target,
                                         std::uint64_t word);
    void readByte(std::uint8_t high, std::uint8_t low);
    void registerVariables(forms::Form& form);
    void registerProcedures(const PanelContext& context);

    Session& session_;
    PanelWords& words_;
    PanelControls& controls_;
};

} // namespace bitlux::zt72518
