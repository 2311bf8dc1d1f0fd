#include "panels/zt72518/chip_link.h"

#include "chips/zt72518/registers.h"
#include "panels/common/colours.h"

#include <array>
#include <memory>

namespace bitlux::zt72518 {

namespace {

constexpr int wordBits = 16;
constexpr std::array captions{"REG_FLAG0",  "REG_FLAG1",  "I/O_FLAG0", "I/O_FLAG1",
                              "LIN0_FLAGS", "LIN1_FLAGS", "CAN_LOC",   "CAN_BUS",
                              "VREG_G",     "SAFE_G",     "I/O_G",     "LIN_G",
                              "CAN_G",      "RST",        "WU",        "INT"};

} // namespace

void pack(Session& session, std::uint8_t high, std::uint8_t low) {
    session.WordToSend.assign(wordBits, 0); // bits of another page's word must not mix in
    session.WordToSend[8] = high;
    session.WordToSend[0] = low;
}

void sendPacked(Session& session, WordEngine& engine, std::uint8_t high, std::uint8_t low) {
    pack(session, high, low);
    engine.SendSPI();
}

ChipLink::ChipLink(forms::Form& form, Session& session, WordEngine& engine)
    : session_(session),
      engine_(engine),
      Reg_W("Reg_W", 0, wordBits - 1, [&form](const std::string& name, int bit) {
          auto label = std::make_unique<forms::Label>(
              form, name, captions.at(static_cast<std::size_t>(bit)), bit);
          label->setBackColor(forms::windowColor);
          return label;
      }) {}

void ChipLink::send(std::uint8_t high, std::uint8_t low) {
    sendPacked(session_, engine_, high, low);
}

void ChipLink::Send_SPI() {
    send(session_.ZT72518WordHigh, session_.ZT72518WordLow);
    session_.ZT72518ReplyLow = replyLow();
    session_.ZT72518ReplyHigh = replyHigh();
}

bool ChipLink::exchange(std::uint16_t word) {
    session_.ZT72518WordHigh = static_cast<std::uint8_t>(word >> 8);
    session_.ZT72518WordLow = static_cast<std::uint8_t>(word);
    Send_SPI();
    return !linkFailed();
}

void ChipLink::ReadLowWord(std::uint8_t high) {
    send(high, 0);
    Update_Miso_Read();
}

void ChipLink::ReadHighWord(std::uint8_t high) {
    send(high, oldchips::zt72518::highViewByte);
    Update_Miso_Read();
}

void ChipLink::Update_Miso_Write() {
    show(0);
}

void ChipLink::Update_Miso_Read() {
    show(wordBits / 2);
}

void ChipLink::show(int firstBit) {
    for (int bit = firstBit; bit < wordBits; ++bit)
        light(Reg_W(bit), received(bit), litColour);
}

bool ChipLink::received(int bit) const {
    const auto element = static_cast<std::size_t>(bit);
    return element < session_.WordReceived.size() && session_.WordReceived[element] == 1;
}

std::uint8_t ChipLink::receivedByte(int lowBit) const {
    unsigned sum = 0;
    for (int bit = 0; bit < 8; ++bit)
        sum |= received(lowBit + bit) ? 1U << bit : 0U;
    return static_cast<std::uint8_t>(sum);
}

std::uint8_t ChipLink::replyLow() const {
    return receivedByte(0);
}

std::uint8_t ChipLink::replyHigh() const {
    return receivedByte(wordBits / 2);
}

} // namespace bitlux::zt72518
