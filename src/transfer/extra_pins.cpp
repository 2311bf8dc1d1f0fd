#include "transfer/extra_pins.h"

#include <array>

namespace bitlux {

namespace {

constexpr int dataBits = 8;
constexpr int controlBits = 4;

std::uint8_t withBit(std::uint8_t pins, std::size_t bit, bool high) {
    const auto mask = static_cast<std::uint8_t>(1U << bit);
    return static_cast<std::uint8_t>(high ? pins | mask : pins & ~mask);
}

} // namespace

void nameDataPin(Session& session, int bit, const std::string& name) {
    session.DataPortPins.setName(bit, name);
    session.DataPortPins.setLevel(bit, ConstLow);
}

void nameControlPin(Session& session, int bit, const std::string& name) {
    session.ControlPortPins.setName(bit, name);
    session.ControlPortPins.setLevel(bit, controlBitLevel(bit, false));
}

PinRegister setPortPins(Session& session, std::string_view name, bool high) {
    if (name.empty()) // as on every free bit, those of the SPI lines among them
        return PinRegister::None;
    PinRegister found = PinRegister::None;
    for (int bit = 0; bit < dataBits; ++bit)
        if (session.DataPortPins.name(bit) == name) {
            session.DataPortPins.setLevel(bit, high ? ConstHigh : ConstLow);
            found = PinRegister::Data;
        }
    if (found == PinRegister::Data)
        return found;
    for (int bit = 0; bit < controlBits; ++bit)
        if (session.ControlPortPins.name(bit) == name) {
            session.ControlPortPins.setLevel(bit, controlBitLevel(bit, high));
            found = PinRegister::Control;
        }
    return found;
}

void setDonglePin(Session& session, std::string_view name, bool high) {
    constexpr std::array<std::string_view, 9> tails{"a 0", "a 1", "a 2", "a 3", "a 4",
                                                    "l 0", "l 1", "l 2", "l 3"};
    for (std::size_t pin = 0; pin < tails.size(); ++pin)
        if (name.ends_with(tails[pin])) {
            if (pin < 8)
                session.USBExtraPins0 = withBit(session.USBExtraPins0, pin, high);
            else
                session.USBExtraPins1 = withBit(session.USBExtraPins1, pin - 8, high);
        }
}

void clearPinMaps(Session& session) {
    for (int bit = 0; bit < dataBits; ++bit)
        nameDataPin(session, bit, {});
    for (int bit = 0; bit < controlBits; ++bit)
        nameControlPin(session, bit, {});
}

std::uint8_t usedDataPins(const Session& session) {
    using Pins = PortPins<dataBits>;
    auto used = static_cast<std::uint8_t>(Pins::mask(session.CSPin) | Pins::mask(session.DIPin) |
                                          Pins::mask(session.ClockPin));
    for (int bit = 0; bit < dataBits; ++bit)
        if (!session.DataPortPins.name(bit).empty())
            used |= Pins::mask(bit);
    return used;
}

std::uint8_t usedControlPins(const Session& session) {
    std::uint8_t used = 0;
    for (int bit = 0; bit < controlBits; ++bit)
        if (!session.ControlPortPins.name(bit).empty())
            used |= PortPins<controlBits>::mask(bit);
    return used;
}

bool hasControlPin(const Session& session) {
    return usedControlPins(session) != 0;
}

void lowerControlPins(Session& session) {
    for (int bit = 0; bit < controlBits; ++bit)
        session.ControlPortPins.setLevel(bit, controlBitLevel(bit, false));
}

} // namespace bitlux
