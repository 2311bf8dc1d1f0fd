#include "gui/configure/type_timing.h"

namespace bitlux::gui {

namespace {

constexpr int firstWrite = 2;
constexpr double readDistance = 0.3;

struct Levels {
    bool selected = false;
    bool clockHigh = false;
    int bit = TypeTiming::noBit;
};

/// Records what the writes of a word do to the lines.
class Recorder {
public:
    Recorder(const ClockingType& type, bool msbFirst)
        : type_(type), msbFirst_(msbFirst), levels_{.clockHigh = type.idle != 0} {}

    void write(const Levels& next) {
        if (next.selected && !levels_.selected)
            select();
        if (next.bit != levels_.bit)
            endDataIn();
        if (next.clockHigh != levels_.clockHigh)
            turnClock(next.clockHigh, levels_.selected && next.selected);
        if (!next.selected && levels_.selected)
            deselect();
        levels_ = next;
        ++now_;
    }

    void readAfterWrite(int bit) { timing_.reads.push_back({now_ - 1 + readDistance, bit}); }
    void readBeforeWrite(int bit) { timing_.reads.push_back({now_ - readDistance, bit}); }

    [[nodiscard]] const Levels& levels() const { return levels_; }
    [[nodiscard]] const TypeTiming& timing() const { return timing_; }

    /// The number of the bit that is transferred n-th.
    [[nodiscard]] int bitAt(int n) const {
        if (n < 0 || n >= TypeTiming::bits)
            return TypeTiming::noBit;
        return msbFirst_ ? TypeTiming::bits - 1 - n : n;
    }

private:
    void select() {
        timing_.selected = now_;
        // A chip that sees a toggling edge first waits for it.
        const Edge first = levels_.clockHigh ? Edge::Falling : Edge::Rising;
        outPosition_ = type_.toggled != type_.valid && type_.toggled == first ? -1 : 0;
        outSince_ = now_;
    }

    void deselect() {
        timing_.deselected = now_;
        endDataOut();
    }

    void endDataIn() {
        if (levels_.bit != TypeTiming::noBit)
            timing_.dataIn.push_back({inSince_, now_, levels_.bit});
        inSince_ = now_;
    }

    void turnClock(bool high, bool seen) {
        const Edge edge = high ? Edge::Rising : Edge::Falling;
        const bool toggled = seen && edge == type_.toggled;
        timing_.clock.push_back({now_, edge, seen && edge == type_.valid, toggled});
        if (toggled) {
            endDataOut();
            ++outPosition_;
        }
    }

    void endDataOut() {
        timing_.dataOut.push_back({outSince_, now_, bitAt(outPosition_)});
        outSince_ = now_;
    }

    const ClockingType& type_;
    bool msbFirst_;
    Levels levels_;
    TypeTiming timing_;
    int now_ = firstWrite; ///< of the next write
    int inSince_ = 0;
    int outSince_ = 0;
    int outPosition_ = 0;
};

void sendBit(Recorder& bus, const ClockingType& type, int bit) {
    const bool skips = type.skipsTopElement && bit == TypeTiming::bits - 1;
    const std::size_t count = type.steps.size() - (skips ? 1 : 0);
    for (std::size_t i = 0; i < count; ++i) {
        if (type.steps[i] != BusStep::Sample)
            bus.write({true, type.steps[i] == BusStep::ClockHigh, bit});
        else if (i == 0)
            bus.readBeforeWrite(bit);
        else
            bus.readAfterWrite(bit);
    }
}

} // namespace

TypeTiming typeTiming(const ClockingType& type, bool msbFirst) {
    Recorder bus(type, msbFirst);
    const bool idleHigh = type.idle != 0;
    bus.write({true, idleHigh, TypeTiming::noBit});
    if (type.leadIn != ClockingType::noLeadIn)
        bus.write({true, type.leadIn != 0, TypeTiming::noBit});
    for (int n = 0; n < TypeTiming::bits; ++n)
        sendBit(bus, type, bus.bitAt(n));
    if (type.ending == WordEnding::ClockRestsFirst)
        bus.write({true, idleHigh, TypeTiming::noBit});
    else if (type.ending == WordEnding::ChipDeselectFirst)
        bus.write({false, bus.levels().clockHigh, bus.levels().bit});
    bus.write({false, idleHigh, TypeTiming::noBit});
    return bus.timing();
}

} // namespace bitlux::gui
