#include "panels/zt72518/chip_words.h"

#include "chips/zt72518/registers.h"
#include "platform/conversions.h"

#include <bit>

#include <fmt/format.h>

namespace bitlux::zt72518 {

namespace chip = oldchips::zt72518;

namespace {

std::string wordText(int high, bool highView) {
    return fmt::format("0x{:02X}{:02X}", high | 1, highView ? chip::highViewByte : 0);
}

} // namespace

std::string flagLineValue(const chip::FlagRow& row) {
    return row.highView ? "80" : "";
}

void ChipWords::ParityOfWordLow(std::uint8_t data) {
    variables_.ParityBit = std::popcount(data) % 2 == 0 ? 1 : 0;
}

void ChipWords::write(const oldchips::Register& target, std::uint32_t data) {
    const auto byte = static_cast<std::uint8_t>(data);
    variables_.WordLowByte = byte;
    if (variables_.SPIParityEnabled)
        ParityOfWordLow(byte);
    store(writeLine(target), hex(byte));
    // The last parity goes on being added when parity is off again.
    const int parity = target.addsParity ? variables_.ParityBit : 0;
    link_.send(static_cast<std::uint8_t>(chip::writeHigh(target.address) + parity), byte);
    link_.Update_Miso_Write();
}

std::uint8_t ChipWords::reading(std::uint8_t high) const {
    return static_cast<std::uint8_t>(high + variables_.ReadBit);
}

std::uint8_t ChipWords::readView(std::uint8_t high, bool highView) {
    if (highView)
        link_.ReadHighWord(reading(high));
    else
        link_.ReadLowWord(reading(high));
    return link_.replyLow();
}

std::uint32_t ChipWords::read(const oldchips::Register& source, RegisterView view) {
    const std::uint8_t reply = readView(chip::readHigh(source.address), view == RegisterView::High);
    store(readLine(source, view), "");
    return reply;
}

std::uint8_t ChipWords::readFlags(const chip::FlagRow& row) {
    const std::uint8_t reply = readView(row.wordHigh, row.highView);
    store(std::string(row.sequenceName), flagLineValue(row));
    return reply;
}

void ChipWords::readGeneralFlags() {
    link_.send(reading(chip::generalFlagsHigh), 0);
    link_.Update_Miso_Write();
}

void ChipWords::store(const std::string& name, const std::string& value) const {
    if (variables_.StoreCommands && !name.empty())
        sinks_.store(name, value);
}

std::string ChipWords::writeText(const oldchips::Register& target) const {
    return fmt::format("0x{:02X}xx", chip::writeHigh(target.address));
}

std::string ChipWords::readText(const oldchips::Register& source, RegisterView view) const {
    return wordText(chip::readHigh(source.address), view == RegisterView::High);
}

std::string ChipWords::flagText(const chip::FlagRow& row) {
    return wordText(row.wordHigh, row.highView);
}

std::string ChipWords::generalFlagsText() {
    return wordText(chip::generalFlagsHigh, false);
}

} // namespace bitlux::zt72518
