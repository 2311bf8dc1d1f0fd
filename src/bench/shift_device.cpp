#include "bench/shift_device.h"

namespace bitlux {

void ShiftDevice::inputsChanged(const DeviceInputs& inputs, const BusShape& shape) {
    const bool selected = inputs.chipSelect == shape.selectedWhenHigh;
    if (selected && !selected_) {
        shape_ = shape;
        received_.clear();
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
    if (rising == shape_.validOnRising)
        received_.push_back(dataIn == shape_.dataInOneIsHigh);
    if (rising == shape_.toggledOnRising)
        ++position_;
}

std::uint64_t ShiftDevice::requestWord(std::size_t bits) const {
    std::uint64_t word = 0;
    for (std::size_t n = 0; n < bits; ++n)
        word = word << 1 | (requestBit(n) ? 1 : 0);
    return word;
}

bool ShiftDevice::dataOut() const {
    const bool bit = position_ >= 0 && answerBit(static_cast<std::size_t>(position_));
    return bit == shape_.dataOutOneIsHigh;
}

} // namespace bitlux
