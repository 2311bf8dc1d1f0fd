#pragma once

#include "bench/device.h"

#include <cstddef>
#include <cstdint>
#include <vector>

namespace bitlux {

/// A device that shifts words on the edges of the clocking type in force: the base of echo and of
/// chip models.
///
/// Where data is valid on one edge and toggled on the other, bit 0 is on the output from chip
/// select on, or from the first edge when that is a toggling one. Where both are the same edge,
/// data in is sampled at the edge, and the output changes after it.
class ShiftDevice : public Device {
public:
    void inputsChanged(const DeviceInputs& inputs, const BusShape& shape) override;
    [[nodiscard]] bool dataOut() const override;

protected:
    /// Bits in the order of transmission.
    using Shifted = std::vector<bool>;

    /// A word begins: its answer, to which missing bits are added as 0.
    virtual Shifted wordBegins(const BusShape& shape) = 0;
    /// Bit n of the answer in the order of transmission, while it is on the output.
    [[nodiscard]] virtual bool answerBit(std::size_t n) const {
        return n < answer_.size() && answer_[n];
    }
    /// The current word, of up to 64 bits, the first one the most significant. Bits not received
    /// yet have the current level of the line.
    [[nodiscard]] std::uint64_t requestWord(std::size_t bits) const;
    /// A word has ended with these bits received.
    virtual void wordEnds(const Shifted& received, const BusShape& shape) = 0;

private:
    void clockEdge(bool rising, bool dataIn);

    BusShape shape_;
    Shifted answer_;
    Shifted received_;
    std::uint64_t start_ = 0; ///< the first 64 bits of it, right-aligned
    int position_ = 0;        ///< of the bit on the output; -1 before the first toggling edge
    bool selected_ = false;
    bool clock_ = false;
    bool dataIn_ = false;
};

} // namespace bitlux
