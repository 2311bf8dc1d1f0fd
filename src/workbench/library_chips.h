#pragma once

#include "bench/chip_source.h"
#include "bench/device.h"
#include "chips/chip_library.h"

#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace bitlux {

/// The chips that the virtual bench has as devices: those of the product, and those of users under
/// the names of their files. No user's file is read for a list.
class LibraryChips : public ChipSource {
public:
    /// The library outlives it.
    explicit LibraryChips(chips::ChipLibrary& library) : library_(library) {}

    [[nodiscard]] std::vector<Entry> entries() const override;
    [[nodiscard]] chips::ChipPtr chipOf(std::string_view device) const override;

private:
    chips::ChipLibrary& library_;
};

/// As makeDevice, deviceNames and deviceDescription do, with the chips of users among the devices.
/// The folders of chips are looked at in each call.
std::unique_ptr<Device> makeBenchDevice(std::string_view name,
                                        const std::vector<Reply>& replies = {});
std::vector<std::string> benchDeviceNames();
std::string benchDeviceDescription(std::string_view name);

} // namespace bitlux
