#include "session/flag.h"
#include "transfer/clocking_type.h"
#include "waveform/line_builder.h"
#include "waveform/wire_levels.h"
#include "waveform/word_drawing.h"

#include <algorithm>

namespace bitlux {

namespace {

const ExtraPinNames donglePinNames{"Data 0",    "Data 1",    "Data 2",    "Data 3",   "Data 4",
                                   "Control 0", "Control 1", "Control 2", "Control 3"};

/// Clocks the bits of a frame according to its type, half a period of its clock from edge to edge.
class CommandedDrawing {
public:
    CommandedDrawing(const CommandedWord& word, const WordRecord& record, const WireAccess& frame,
                     const WireAccess* answer, Waveform& waveform)
        : word_(word),
          type_(clockingType(word.type)),
          sameEdge_(type_.valid == type_.toggled),
          frame_(frame),
          answer_(answer),
          waveform_(waveform),
          now_(frame.nanoseconds),
          clock_(type_.idle == ConstHigh),
          extraPins_(record.donglePinsBefore),
          lines_(waveform, levels(), donglePinNames) {}

    void draw() {
        const bool idleHigh = clock_;
        waveform_.origin = now_;
        if (word_.changesPins)
            extraPins_ = word_.extraPins;
        selected_ = true;
        if (validComesFirst() && !sameEdge_)
            putBit(0);
        write();
        for (int n = 0; n < word_.length; ++n) {
            turnClock(n, !idleHigh);
            turnClock(n, idleHigh);
        }
        now_ += word_.halfPeriod;
        selected_ = dataIn_ = false;
        write();
        waveform_.end = now_;
        closeLastBit();
        lines_.finish();
    }

private:
    [[nodiscard]] LineLevels levels() const {
        return static_cast<LineLevels>(
            levelBit(chipSelectBit, selected_ == word_.selectedWhenHigh) |
            levelBit(clockBit, clock_) | levelBit(dataInBit, dataIn_ == word_.dataInOneIsHigh) |
            static_cast<LineLevels>(extraPins_ << firstExtraBit));
    }

    void write() { lines_.write(now_, levels()); }

    /// Whether data is valid on the first edge of a bit, the one from the idle level.
    [[nodiscard]] bool validComesFirst() const {
        return (type_.valid == Edge::Rising) == (type_.idle == ConstLow);
    }

    void turnClock(int n, bool high) {
        now_ += word_.halfPeriod;
        const Edge edge = high ? Edge::Rising : Edge::Falling;
        const bool isFirst = high == (type_.idle == ConstLow);
        if (sameEdge_ && edge == type_.valid)
            sample(n); // just before the edge
        clock_ = high;
        if (edge == type_.toggled)
            putBit(sameEdge_ || isFirst ? n : n + 1);
        write();
        if (!sameEdge_ && edge == type_.valid)
            sample(n);
    }

    void putBit(int n) {
        if (n > 0)
            waveform_.bits[static_cast<std::size_t>(n) - 1].dataIn.to = now_;
        if (n == word_.length) {
            dataIn_ = false;
            return;
        }
        dataIn_ = bitOf(frame_.frame, n);
        WaveBit& bit = bitFor(n);
        bit.sent = dataIn_;
        bit.dataIn.from = now_;
    }

    void sample(int n) {
        if (answer_ == nullptr)
            return;
        WaveBit& bit = bitFor(n);
        bit.received = bitOf(answer_->frame, n);
        bit.sampledAt = now_;
        bit.dataOut.from = lines_.lastWrite();
        if (n > 0)
            waveform_.bits[static_cast<std::size_t>(n) - 1].dataOut.to = bit.dataOut.from;
        lines_.sample(*bit.received == word_.dataOutOneIsHigh);
    }

    /// The first of the two events of a bit adds it.
    WaveBit& bitFor(int n) {
        const auto index = static_cast<std::size_t>(n);
        if (index == waveform_.bits.size())
            waveform_.bits.emplace_back().number =
                waveform_.msbFirst ? waveform_.length - 1 - n : n;
        return waveform_.bits[index];
    }

    void closeLastBit() {
        if (waveform_.bits.empty())
            return;
        WaveBit& last = waveform_.bits.back();
        last.dataOut.to = now_;
        last.dataIn.to = std::max(last.dataIn.to, last.dataIn.from);
        if (last.dataIn.to == last.dataIn.from)
            last.dataIn.to = now_;
    }

    const CommandedWord& word_;
    const ClockingType& type_;
    bool sameEdge_;
    const WireAccess& frame_;
    const WireAccess* answer_;
    Waveform& waveform_;
    std::int64_t now_;
    bool selected_ = false;
    bool clock_;
    bool dataIn_ = false;
    std::uint16_t extraPins_;
    LineBuilder lines_;
};

} // namespace

void drawCommandedWord(const WordRecord& record, Waveform& waveform) {
    const auto sent =
        std::find_if(record.accesses.begin() + static_cast<std::ptrdiff_t>(record.firstOfWord),
                     record.accesses.end(), [](const WireAccess& access) {
                         return access.kind == WireAccess::Kind::FrameOut;
                     });
    if (sent == record.accesses.end())
        return;
    const auto answer = std::find_if(sent, record.accesses.end(), [](const WireAccess& access) {
        return access.kind == WireAccess::Kind::FrameIn;
    });
    const CommandedWord word(sent->frame);
    waveform.type = word.type;
    waveform.length = word.length;
    waveform.selectedWhenHigh = word.selectedWhenHigh;
    CommandedDrawing(word, record, *sent, answer == record.accesses.end() ? nullptr : &*answer,
                     waveform)
        .draw();
}

} // namespace bitlux
