#pragma once

#include <cstdint>
#include <random>
#include <string_view>
#include <vector>

namespace bitlux {

/// Something that goes wrong with the dongle of the virtual bench when a frame arrives or, with
/// Busy, when a program opens the dongle.
struct DongleFault {
    enum class Kind : std::uint8_t {
        None,
        Silent,   ///< the frame is taken and never answered
        Late,     ///< the answer comes later by `duration`
        Short,    ///< the answer has only `bytes` bytes
        Stalled,  ///< the pipe refuses the frame
        Babbling, ///< once it has answered it sends frames without end
        Gone,     ///< the dongle vanishes, for `duration` or, when that is 0, for good
        Busy,     ///< the dongle is found and cannot be opened: another program holds it
    };

    Kind kind = Kind::None;
    std::int64_t duration = 0; ///< nanoseconds
    int bytes = 0;             ///< 0 to 7
    int frame = 0;             ///< the frame that fails, counted from 1; 0 is every one
    double chance = 1;         ///< that a frame fails at all, 0 to 1
};

/// A fault from its text: a kind and what belongs to it, `silent`, `late:MS`, `short:BYTES`,
/// `stalled`, `babbling`, `gone`, `gone:MS`; then, where wanted, `@FRAME` and `/CHANCE`, as in
/// "late:700@3" or "short:5/0.25"; or `busy` alone. Raises Failure (Conversion) for any other text.
DongleFault dongleFaultFrom(std::string_view text);

/// Decides which fault applies to a frame. The same seed gives the same faults.
class DongleFaults {
public:
    explicit DongleFaults(std::vector<DongleFault> faults = {}, std::uint32_t seed = 1);

    /// The fault of the next frame: the first that applies, or one of kind None.
    DongleFault next();
    /// Whether the dongle refuses to be opened.
    [[nodiscard]] bool refusesOpening() const { return refusesOpening_; }

private:
    std::vector<DongleFault> faults_;
    std::mt19937 random_;
    bool refusesOpening_;
    int frames_ = 0;
};

} // namespace bitlux
