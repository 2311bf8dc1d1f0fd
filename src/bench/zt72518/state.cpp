#include "bench/zt72518/state.h"

#include <utility>

namespace bitlux::zt72518 {

namespace {

/// Register and view of each row of flags.
constexpr std::array<std::pair<const char*, const char*>, flagRowCount> flagViews{
    {{"Regulator", "Reg Low"},
     {"CAN", "CAN Low "},
     {"I/O", "I/O Low"},
     {"Interrupts", "Safe INT"},
     {"LIN 1", "Lin 1"},
     {"LIN 2", "Lin 2"},
     {"Regulator", "Reg High"},
     {"CAN", "CAN High"},
     {"I/O", "I/O High"},
     {"Interrupts", "Safe RST"}}};

constexpr std::array<std::uint8_t, flagRowCount> wakeUps{0,    0x80, 0, 0,    0x40,
                                                         0x40, 0x01, 0, 0xF0, 0};

} // namespace

State::State(ModelStore& store) {
    for (std::size_t i = 0; i < registers_.size(); ++i)
        registers_[i] = &store.of(store.owner(registerTitles[i]));
    for (std::size_t row = 0; row < flagRowCount; ++row) {
        const auto& [owner, view] = flagViews[row];
        rows_[row] = &store.of(store.owner(owner), store.view(owner, view));
    }
    rows_[Pins] = &pins_;
    rows_[Faults] = &faults_;
}

bool State::isWakeUp(const StateBit& bit) const {
    for (std::size_t row = 0; row < flagRowCount; ++row)
        if (rows_[row] == bit.word)
            return (wakeUps[row] >> bit.bit & 1) != 0;
    return false;
}

bool State::anyWakeUp() const {
    for (std::size_t row = 0; row < flagRowCount; ++row)
        if ((*rows_[row] & wakeUps[row]) != 0)
            return true;
    return false;
}

} // namespace bitlux::zt72518
