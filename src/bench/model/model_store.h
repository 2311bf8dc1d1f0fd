#pragma once

#include "bench/cycle.h"
#include "chips/description.h"

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace bitlux {

/// One bit of a chip's content.
struct StateBit {
    std::uint64_t* word = nullptr;
    int bit = 0;

    [[nodiscard]] bool isOn() const { return (*word >> bit & 1) != 0; }
    void set(bool on = true) const {
        const std::uint64_t mask = std::uint64_t{1} << bit;
        *word = on ? *word | mask : *word & ~mask;
    }
};

/// The values of a chip's registers on the bench, and of the views that have their own value. All
/// start with their reset values. Addresses of values stay valid for the lifetime of the store.
class ModelStore {
public:
    /// Raises Failure (OutOfRange) when the chip has no such device.
    ModelStore(chips::ChipPtr chip, std::string_view device);
    ModelStore(const ModelStore&) = delete;
    ModelStore& operator=(const ModelStore&) = delete;

    [[nodiscard]] const chips::Chip& chip() const { return *chip_; }
    [[nodiscard]] const chips::Device& device() const { return *device_; }

    std::uint64_t& of(const chips::Register& owner);
    [[nodiscard]] std::uint64_t of(const chips::Register& owner) const;
    /// The value of a view: its own, or that of its register.
    std::uint64_t& of(const chips::Register& owner, const chips::View& view);

    /// The same by titles, or by the name of a row, for parts that are written for one chip: raise
    /// Failure (File) when the chip's file has no such register or view.
    const chips::Register& owner(std::string_view title) const;
    std::uint64_t& flags(const std::string& row);
    const chips::View& view(std::string_view ownerTitle, std::string_view title) const;

    /// Resets the writable registers to their reset values.
    void resetWritten();

    std::uint64_t status = 0; ///< status bits that are on, at their positions in an answer
    /// Including those that are set while one of their flags is.
    [[nodiscard]] std::uint64_t summary() const;
    /// The status bits that a flag sets.
    [[nodiscard]] std::uint64_t summaryOf(const StateBit& flag) const;

    void addPhase(Phase& phase) const;

private:
    [[nodiscard]] std::size_t indexOf(const chips::Register& owner) const;
    [[nodiscard]] std::size_t placeOf(const chips::Register& owner, const chips::View& view) const;
    void reset();

    /// A status bit, and flags in the values that set it.
    struct Sum {
        std::uint64_t bit;
        std::size_t place;
        std::uint64_t flags;
    };

    void findSums();

    chips::ChipPtr chip_;
    const chips::Device* device_;
    std::vector<Sum> sums_;
    std::vector<std::uint64_t> values_;             ///< of the registers, then of the views
    std::vector<std::vector<std::size_t>> viewsAt_; ///< by register and view
};

} // namespace bitlux
