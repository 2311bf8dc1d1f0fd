#include "transfer/dongle_frame.h"

#include "platform/conversions.h"
#include "platform/failure.h"

#include <cmath>
#include <vector>

#include <fmt/format.h>

namespace bitlux {

namespace {

constexpr std::uint8_t highestType = 7;

/// Iterates over the elements of a word in the order of transfer.
class Elements {
public:
    explicit Elements(const Session& session)
        : index_(session.MSBFirst == ConstOn ? session.SPIWordLength - 1 : 0),
          step_(session.MSBFirst == ConstOn ? -1 : 1) {}

    template <typename Word>
    auto& next(Word& word) {
        if (index_ < 0 || static_cast<std::size_t>(index_) >= word.size())
            throw Failure(Failure::Kind::OutOfRange,
                          fmt::format("Subscript out of range: the dongle takes whole bytes, and "
                                      "the word has no bit {}",
                                      index_));
        auto& element = word[static_cast<std::size_t>(index_)];
        index_ += step_;
        return element;
    }

private:
    int index_;
    int step_;
};

std::uint8_t& dataByte(UsbFrame& frame, int byte) {
    const std::size_t index = frameData + static_cast<std::size_t>(byte);
    if (index >= frame.size())
        throw Failure(
            Failure::Kind::OutOfRange,
            fmt::format("Subscript out of range: the word has more than the {} bytes that "
                        "a frame of the dongle takes",
                        frame.size() - frameData));
    return frame[index];
}

std::uint8_t packByte(const std::vector<std::int16_t>& word, Elements& elements) {
    // Elements may hold whole bytes: the last of the eight enters unshifted.
    std::int16_t sum = 0;
    for (int bit = 0; bit < 8; ++bit)
        sum = static_cast<std::int16_t>(toInt16(2 * sum) | elements.next(word));
    return static_cast<std::uint8_t>(sum & 0xFF);
}

std::uint8_t shapeByte(const Session& session) {
    const auto flag = [](bool on, int bit) { return on ? 1 << bit : 0; };
    return frameByte(session.SPIType - 1 + flag(session.CSAssertLevel == ConstHigh, 3) +
                     flag(session.DIOneLevel == ConstHigh, 4) + flag(session.DOHighValue == 1, 5) +
                     session.SPIBaudRate);
}

} // namespace

std::uint8_t frameByte(int value) {
    if (value < 0 || value > 0xFF)
        throw Failure(Failure::Kind::Overflow,
                      fmt::format("Overflow: {} does not fit a byte of the frame", value));
    return static_cast<std::uint8_t>(value);
}

int dataBytesOf(int wordLength) {
    // Rounded with halves to the even number, before the 2 is taken off again.
    return static_cast<int>(std::nearbyint(wordLength / 8.0 + 2)) - 2;
}

UsbFrame buildWordFrame(Session& session) {
    UsbFrame frame{};
    frame[0] = frameByte(session.SPIWordLength + (session.USBPinUpdate == 1 ? 0x40 : 0) +
                         ((session.USBExtraPins1 & 1) != 0 ? 0x80 : 0));
    if (session.USBFrameTopBit) {
        frame[0] = frameByte(frame[0] + 0x80);
        session.USBFrameTopBit = false;
    }
    frame[1] = shapeByte(session);
    frame[2] = session.USBExtraPins0;
    Elements elements(session);
    for (int byte = 0; byte < dataBytesOf(session.SPIWordLength); ++byte)
        dataByte(frame, byte) = packByte(session.WordToSend, elements);
    if (session.ZT72537PanelActive == 1)
        frame.back() = session.ZT72537FrameByte7;
    if (session.FirmwareUpdateRequest) {
        frame[1] |= highestType;
        session.FirmwareUpdateRequest = false;
    }
    return frame;
}

void unpackAnswer(const UsbFrame& answer, Session& session) {
    UsbFrame data = answer;
    Elements elements(session);
    for (int byte = 0; byte < dataBytesOf(session.SPIWordLength); ++byte)
        for (int bit = 7; bit >= 0; --bit)
            elements.next(session.WordReceived) =
                static_cast<std::int16_t>((dataByte(data, byte) >> bit) & 1);
}

} // namespace bitlux
