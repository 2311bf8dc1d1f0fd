#pragma once

#include "session/session.h"

#include <string_view>

namespace bitlux {

/// Register of the parallel port that an extra pin was found on.
enum class PinRegister { None, Data, Control };

/// Level of a control register bit that makes its pin high or low: bits 0, 1 and 3 are inverted by
/// the hardware.
constexpr std::int16_t controlBitLevel(int bit, bool high) {
    return high == (bit == 2) ? ConstHigh : ConstLow;
}

/// Names a pin of the data or control register and makes it low.
void nameDataPin(Session& session, int bit, const std::string& name);
void nameControlPin(Session& session, int bit, const std::string& name);

/// Sets all pins of a name high or low in the shadow registers; writes nothing. The control
/// register is only searched when the data register has no such pin. An empty name matches no pin.
PinRegister setPortPins(Session& session, std::string_view name, bool high);

/// Sets a pin of the dongle high or low by its name: one ending in "a 0" to "a 4" or "l 0" to "l
/// 3", as "Data 0" and "Control 3" do. Other names are ignored.
void setDonglePin(Session& session, std::string_view name, bool high);

/// Makes all extra pins free and low on both registers.
void clearPinMaps(Session& session);

/// The bits of the data register that have an SPI line or an extra pin, and those of the control
/// register that have an extra pin.
std::uint8_t usedDataPins(const Session& session);
std::uint8_t usedControlPins(const Session& session);

/// Whether a pin of the control register has a name.
bool hasControlPin(const Session& session);
/// Makes all pins of the control register low; they keep their names.
void lowerControlPins(Session& session);

} // namespace bitlux
