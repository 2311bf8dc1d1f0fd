#pragma once

#include "platform/usb_endpoint.h"
#include "session/session.h"

#include <cstdint>

namespace bitlux {

/// Where the data of a frame begins; the bit that travels first on the SPI side is bit 7 there.
inline constexpr std::size_t frameData = 3;

/// Data bytes that a word of so many bits takes. Whole bytes are what the dongle is made for; of
/// the lengths between them some lose their last bits, and the others take more bits than the word
/// has, which fails when they are packed.
int dataBytesOf(int wordLength);
/// Whether a word of so many bits fills the bytes that it takes, and these fit the frame.
constexpr bool isCarriedWhole(int wordLength) {
    constexpr int longest = 40;
    return wordLength >= 8 && wordLength <= longest && wordLength % 8 == 0;
}

/// The frame that carries Session::WordToSend in the shape that the session tells. Takes up and
/// clears USBFrameTopBit and FirmwareUpdateRequest.
///
/// Raises Failure: Overflow when a byte or the sum of eight elements leaves its range, OutOfRange
/// when a byte has more bits than the word has left or the word more bytes than the frame.
UsbFrame buildWordFrame(Session& session);

/// Puts the bits of an answer into Session::WordReceived, which has SPIWordLength elements. Raises
/// Failure (OutOfRange) as buildWordFrame does.
void unpackAnswer(const UsbFrame& answer, Session& session);

/// A byte of a frame; raises Failure (Overflow) for a number that is none.
std::uint8_t frameByte(int value);

/// A frame that is no word but a command to the dongle itself.
constexpr UsbFrame commandFrame(std::uint8_t command) {
    return {0, command};
}

} // namespace bitlux
