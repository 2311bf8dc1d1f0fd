#pragma once

#include "platform/usb_endpoint.h"
#include "session/session.h"

#include <cstdint>

namespace bitlux {

/// Index of the first data byte of a frame; its bit 7 is sent first on the SPI side.
inline constexpr std::size_t frameData = 3;

/// Data bytes of a word of this many bits. The dongle is made for whole bytes. Of the other lengths
/// some lose their last bits; the rest need more bits than the word has, so that packing them
/// fails.
int dataBytesOf(int wordLength);
/// Whether a word of this many bits fills its bytes, and these fit into the frame.
constexpr bool isCarriedWhole(int wordLength) {
    constexpr int longest = 40;
    return wordLength >= 8 && wordLength <= longest && wordLength % 8 == 0;
}

/// The frame that carries Session::WordToSend in the shape that the session defines. Uses and
/// clears USBFrameTopBit and FirmwareUpdateRequest.
///
/// Raises Failure: Overflow when a byte or the sum of eight elements leaves its range, OutOfRange
/// when a byte has more bits than the word has left or the word more bytes than the frame.
UsbFrame buildWordFrame(Session& session);

/// Puts the bits of an answer into Session::WordReceived, which has SPIWordLength elements. Raises
/// Failure (OutOfRange) as buildWordFrame does.
void unpackAnswer(const UsbFrame& answer, Session& session);

/// A byte of a frame; raises Failure (Overflow) for a number that is not a byte.
std::uint8_t frameByte(int value);

/// A frame that is not a word but a command to the dongle itself.
constexpr UsbFrame commandFrame(std::uint8_t command) {
    return {0, command};
}

} // namespace bitlux
