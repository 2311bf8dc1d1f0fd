#include "bench/shift_device.h"

#include <algorithm>

namespace bitlux {

namespace {

constexpr std::size_t longestWord = 64;

} // namespace

void ShiftDevice::inputsChanged(const DeviceInputs& inputs, const BusShape& shape) {
    const bool selected = inputs.chipSelect == shape.selectedWhenHigh;
    if (selected && !selected_) {
        shape_ = shape;
        received_.clear();
        start_ = 0;
        answer_ = wordBegins(shape);
        const bool firstEdgeToggles = shape.toggledOnRising != shape.validOnRising &&
                                      shape.toggledOnRising != shape.clockIdlesHigh;
        position_ = firstEdgeToggles ? -1 : 0;
    } else if (!selected && selected_) {
        wordEnds(received_, shape_);
    } else if (selected && inputs.clock != clock_) {
        clockEdge(inputs.clock, inputs.dataIn);
    }
    selected_ = selected;
    clock_ = inputs.clock;
    dataIn_ = inputs.dataIn;
}

void ShiftDevice::clockEdge(bool rising, bool dataIn) {
    if (rising == shape_.validOnRising) {
        const bool one = dataIn == shape_.dataInOneIsHigh;
        if (received_.size() < longestWord)
            start_ = start_ << 1 | (one ? 1 : 0);
        received_.push_back(one);
    }
    if (rising == shape_.toggledOnRising)
        ++position_;
}

std::uint64_t ShiftDevice::requestWord(std::size_t bits) const {
    const std::size_t taken = std::min(received_.size(), longestWord);
    if (taken >= bits)
        return start_ >> (taken - bits);
    const std::size_t missing = bits - taken;
    const bool one = dataIn_ == shape_.dataInOneIsHigh;
    const std::uint64_t line = one ? ~std::uint64_t{0} >> (longestWord - missing) : 0;
    return missing == longestWord ? line : start_ << missing | line;
}

bool ShiftDevice::dataOut() const {
    const bool bit = position_ >= 0 && answerBit(static_cast<std::size_t>(position_));
    return bit == shape_.dataOutOneIsHigh;
}

} // namespace bitlux
