#pragma once

#include "waveform/waveform.h"

#include <array>

namespace bitlux {

/// Levels of CS, CLK and DI and of up to twelve extra pins, a bit each in the order of the lines.
using LineLevels = std::uint16_t;

inline constexpr unsigned chipSelectBit = 0;
inline constexpr unsigned clockBit = 1;
inline constexpr unsigned dataInBit = 2;
inline constexpr unsigned firstExtraBit = 3;

constexpr LineLevels levelBit(unsigned bit, bool high) {
    return static_cast<LineLevels>((high ? 1U : 0U) << bit);
}

/// Makes the lines of a waveform from successive events. Times are those of the clock of the
/// recording.
class LineBuilder {
public:
    /// The edges are added to `lines`; extra pins without a name are left out.
    LineBuilder(Waveform& waveform, LineLevels before,
                const std::array<std::string, 12>& extraPins);

    /// The lines change their levels.
    void write(std::int64_t at, LineLevels levels);
    /// DO was read.
    void sample(bool high);
    [[nodiscard]] std::int64_t lastWrite() const { return lastWrite_; }

    /// Removes the extra pins that did not change, and makes times relative to the word's origin.
    void finish();

private:
    static void put(WaveLine& line, std::int64_t at, Level level);

    Waveform& waveform_;
    std::vector<unsigned> extraBits_;
    LineLevels levels_;
    std::int64_t lastWrite_ = 0;
};

} // namespace bitlux
