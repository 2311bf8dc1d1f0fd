#include "panels/zt72518/chip_words.h"

#include "panels/common/binary_text.h"

#include <bit>
#include <string>

namespace bitlux::zt72518 {

namespace {

constexpr int highByte = 8;              ///< its lowest bit
constexpr std::uint64_t specialMode = 9; ///< register that is written without parity
constexpr ControlRef parityBox{"Ch_Init_Misc", 6};

} // namespace

ChipWords::ChipWords(const PanelContext& context)
    : session_(context.outside.session), words_(context.words), controls_(context.controls) {
    words_.adjust = [this](PanelWords::Purpose purpose, const chips::Register* target,
                           std::uint64_t word) { return adjusted(purpose, target, word); };
    controls_.onClick(parityBox, [this] {
        SPIParityEnabled = controls_.get<forms::CheckBox>(parityBox).checked();
    });
    registerVariables(context.form);
    registerProcedures(context);
}

void ChipWords::registerVariables(forms::Form& form) {
    form.variable("BitIndex", BitIndex);
    form.variable("WordLowByte", WordLowByte);
    form.variable("SPIParityEnabled", SPIParityEnabled);
    form.variable("ParityBit", ParityBit);
    form.variable("ReadBit", ReadBit);
    form.variable("ZT72518WordHigh", session_.ZT72518WordHigh);
    form.variable("ZT72518WordLow", session_.ZT72518WordLow);
    form.variable("ZT72518ReplyLow", session_.ZT72518ReplyLow);
    form.variable("ZT72518ReplyHigh", session_.ZT72518ReplyHigh);
}

void ChipWords::registerProcedures(const PanelContext& context) {
    forms::Form& form = context.form;
    form.procedure("Send_SPI", [this] { Send_SPI(); });
    form.procedure("ReadLowWord", [this](std::uint8_t high) { readByte(high, 0); });
    form.procedure("ReadHighWord", [this](std::uint8_t high) { readByte(high, highViewByte); });
    form.procedure("Update_Miso_Write", [this] { words_.answered({}); });
    form.procedure("Update_Miso_Read", [this] { words_.answered(words_.format().statusOfRead); });
    form.procedure("ParityOfWordLow", [this](std::uint8_t data) { ParityOfWordLow(data); });
    form.procedure("Color_Decod",
                   [this](const std::string& row) { WordLowByte = controls_.row(row).byte(); });
    form.procedure("HEXtoBIN", [](const std::string& digits) { return HEXtoBIN(digits); });
}

void ChipWords::load() {
    ParityBit = 0;
    ReadBit = 1;
}

std::uint64_t ChipWords::adjusted(PanelWords::Purpose purpose, const chips::Register* target,
                                  std::uint64_t word) {
    if (purpose != PanelWords::Purpose::Write) {
        const std::uint64_t read = words_.format().read;
        return (word - read + (static_cast<std::uint64_t>(ReadBit) << highByte)) & 0xFFFF;
    }
    WordLowByte = static_cast<std::uint8_t>(word);
    if (SPIParityEnabled)
        ParityOfWordLow(WordLowByte);
    if (target != nullptr && target->address == specialMode)
        return word;
    return word + (std::uint64_t{ParityBit} << highByte);
}

void ChipWords::ParityOfWordLow(std::uint8_t data) {
    ParityBit = std::popcount(data) % 2 == 0 ? 1 : 0;
}

void ChipWords::send(std::uint8_t high, std::uint8_t low) {
    words_.send(static_cast<std::uint64_t>(high) << highByte | low);
}

void ChipWords::readByte(std::uint8_t high, std::uint8_t low) {
    send(high, low);
    words_.answered(words_.format().statusOfRead);
}

void ChipWords::Send_SPI() {
    send(session_.ZT72518WordHigh, session_.ZT72518WordLow);
    session_.ZT72518ReplyLow = replyLow();
    session_.ZT72518ReplyHigh = replyHigh();
}

bool ChipWords::exchange(std::uint16_t word) {
    session_.ZT72518WordHigh = static_cast<std::uint8_t>(word >> highByte);
    session_.ZT72518WordLow = static_cast<std::uint8_t>(word);
    Send_SPI();
    return !linkFailed();
}

} // namespace bitlux::zt72518
