#include "transfer/clocking_type.h"
#include "waveform/line_builder.h"
#include "waveform/word_drawing.h"

namespace bitlux {

namespace {

constexpr std::uint8_t invertedControlBits = 0b1011;

/// Reads the accesses of a word in the order in which the word engine makes them.
class PortDrawing {
public:
    PortDrawing(const WordRecord& record, Waveform& waveform)
        : record_(record),
          shape_(record.shape),
          type_(clockingType(record.shape.type)),
          waveform_(waveform),
          data_(record.dataBefore),
          control_(record.controlBefore),
          lines_(waveform, levels(), *record.shape.extraPins) {}

    void draw() {
        while (next_ < record_.firstOfWord)
            take();
        if (next_ < record_.accesses.size())
            waveform_.origin = record_.accesses[next_].nanoseconds;
        takeWrite();
        if (type_.leadIn != ClockingType::noLeadIn)
            takeWrite();
        for (int n = 0; n < shape_.length && takeBit(n); ++n) {
        }
        const std::int64_t ending = timeOfNext();
        while (next_ < record_.accesses.size())
            take();
        waveform_.end = lines_.lastWrite();
        closeWindows(ending);
        lines_.finish();
    }

private:
    [[nodiscard]] bool bitAt(int pin) const { return ((data_ >> pin) & 1) != 0; }

    [[nodiscard]] LineLevels levels() const {
        const auto extras = static_cast<LineLevels>(
            data_ | static_cast<LineLevels>(((control_ ^ invertedControlBits) & 0xF) << 8));
        return static_cast<LineLevels>(levelBit(chipSelectBit, bitAt(shape_.chipSelectPin)) |
                                       levelBit(clockBit, bitAt(shape_.clockPin)) |
                                       levelBit(dataInBit, bitAt(shape_.dataInPin)) |
                                       static_cast<LineLevels>(extras << firstExtraBit));
    }

    [[nodiscard]] std::int64_t timeOfNext() const {
        return next_ < record_.accesses.size() ? record_.accesses[next_].nanoseconds
                                               : lines_.lastWrite();
    }

    void take() {
        const WireAccess& access = record_.accesses[next_++];
        if (access.kind != WireAccess::Kind::Write)
            return;
        const int offset = access.address - shape_.address;
        if (offset == dataRegister)
            data_ = access.value;
        else if (offset == controlRegister)
            control_ = access.value;
        else
            return;
        lines_.write(access.nanoseconds, levels());
    }

    [[nodiscard]] bool nextIs(WireAccess::Kind kind) const {
        return next_ < record_.accesses.size() && record_.accesses[next_].kind == kind;
    }

    void takeWrite() {
        if (nextIs(WireAccess::Kind::Write))
            take();
    }

    /// False when the word ends before the end of the bit.
    bool takeBit(int n) {
        WaveBit bit;
        bit.number = shape_.msbFirst ? shape_.length - 1 - n : n;
        const bool skips = type_.skipsTopElement && bit.number == shape_.length - 1;
        bool isPut = false;
        bool good = true;
        for (std::size_t i = 0; good && i < type_.steps.size() - (skips ? 1 : 0); ++i) {
            const bool samples = type_.steps.at(i) == BusStep::Sample;
            good = nextIs(samples ? WireAccess::Kind::Read : WireAccess::Kind::Write);
            if (good && samples) {
                sample(bit);
            } else if (good) {
                take();
                if (!isPut)
                    putBit(bit);
                isPut = true;
            }
        }
        if (isPut || bit.received)
            waveform_.bits.push_back(bit);
        return good;
    }

    void sample(WaveBit& bit) {
        const WireAccess& access = record_.accesses[next_++];
        const bool high = ((access.value >> shape_.dataOutPin) & 1) != 0;
        bit.received = high == shape_.dataOutOneIsHigh;
        bit.sampledAt = access.nanoseconds;
        bit.dataOut.from = lines_.lastWrite();
        lines_.sample(high);
    }

    void putBit(WaveBit& bit) {
        bit.sent = bitAt(shape_.dataInPin) == shape_.dataInOneIsHigh;
        bit.dataIn.from = lines_.lastWrite();
    }

    /// Each bit lasts until the next one.
    void closeWindows(std::int64_t ending) {
        auto& bits = waveform_.bits;
        for (std::size_t n = 0; n < bits.size(); ++n) {
            const bool isLast = n + 1 == bits.size();
            bits[n].dataIn.to = isLast ? ending : bits[n + 1].dataIn.from;
            bits[n].dataOut.to = isLast ? waveform_.end : bits[n + 1].dataOut.from;
        }
    }

    const WordRecord& record_;
    const WordShape& shape_;
    const ClockingType& type_;
    Waveform& waveform_;
    std::uint8_t data_;
    std::uint8_t control_;
    LineBuilder lines_;
    std::size_t next_ = 0;
};

} // namespace

void drawPortWord(const WordRecord& record, Waveform& waveform) {
    PortDrawing(record, waveform).draw();
}

} // namespace bitlux
