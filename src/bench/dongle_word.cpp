#include "bench/dongle_word.h"

#include <array>

namespace bitlux {

namespace {

/// The position of the n-th bit in the order of transfer. Bits beyond the frame have none.
struct Place {
    explicit Place(int n) : byte(firstDataByte + static_cast<std::size_t>(n / 8)), bit(7 - n % 8) {}

    [[nodiscard]] bool isInside(const UsbFrame& frame) const { return byte < frame.size(); }

    std::size_t byte;
    int bit;
};

bool bitOf(const UsbFrame& frame, int n) {
    const Place place(n);
    return place.isInside(frame) && ((frame[place.byte] >> place.bit) & 1) != 0;
}

void setBit(UsbFrame& frame, int n, bool one) {
    const Place place(n);
    if (!place.isInside(frame))
        return;
    const auto mask = static_cast<std::uint8_t>(1U << static_cast<unsigned>(place.bit));
    frame[place.byte] =
        static_cast<std::uint8_t>(one ? frame[place.byte] | mask : frame[place.byte] & ~mask);
}

/// The lines of the dongle while a word is on its way.
class Lines {
public:
    Lines(const BusShape& shape, Device& device) : shape_(shape), device_(device) {
        levels_ = {.chipSelect = !shape.selectedWhenHigh,
                   .clock = shape.clockIdlesHigh,
                   .dataIn = !shape.dataInOneIsHigh};
        drive();
    }

    void select(bool selected) {
        levels_.chipSelect = selected == shape_.selectedWhenHigh;
        drive();
    }

    /// Clocks one bit through and returns the one that came back.
    bool exchange(bool bit) {
        const bool sameEdge = shape_.validOnRising == shape_.toggledOnRising;
        bool firstEdge = !shape_.clockIdlesHigh; // rising
        if (!sameEdge && firstEdge == shape_.validOnRising) {
            put(bit); // it must be stable before the first edge
            drive();
        }
        bool received = false;
        for (const bool rising : {firstEdge, !firstEdge}) {
            if (rising == shape_.validOnRising) {
                received = device_.dataOut() == shape_.dataOutOneIsHigh;
                device_.sampled();
            }
            if (rising == shape_.toggledOnRising && (sameEdge || rising == firstEdge))
                put(bit);
            levels_.clock = rising;
            drive();
        }
        return received;
    }

private:
    void put(bool bit) { levels_.dataIn = bit == shape_.dataInOneIsHigh; }
    void drive() { device_.inputsChanged(levels_, shape_); }

    const BusShape& shape_;
    Device& device_;
    DeviceInputs levels_;
};

} // namespace

DongleFrame::DongleFrame(const UsbFrame& frame)
    : length(frame[0] & 0x3F),
      changesPins((frame[0] & 0x40) != 0),
      type((frame[1] & 7) + 1),
      selectedWhenHigh((frame[1] & 0x08) != 0),
      dataInOneIsHigh((frame[1] & 0x10) != 0),
      dataOutOneIsHigh((frame[1] & 0x20) != 0),
      extraPins(static_cast<std::uint16_t>(frame[2] | (frame[0] & 0x80) << 1)) {
    constexpr std::array<std::int64_t, 4> byCode{250, 1000, 2000, 16000}; // 4 MHz to 62.5 kHz
    bitTime = byCode[frame[1] >> 6];
}

UsbFrame clockWord(const UsbFrame& frame, const BusShape& shape, Device& device) {
    UsbFrame answer = frame;
    Lines lines(shape, device);
    lines.select(true);
    for (int n = 0; n < shape.wordLength; ++n)
        setBit(answer, n, lines.exchange(bitOf(frame, n)));
    lines.select(false);
    return answer;
}

} // namespace bitlux
