#include "workbench/library_chips.h"

#include <algorithm>

namespace bitlux {

std::vector<ChipSource::Entry> LibraryChips::entries() const {
    std::vector<Entry> all = embeddedChipSource().entries();
    for (const chips::ChipLibrary::Entry& any : library_.entries()) {
        const bool isTaken = std::any_of(all.begin(), all.end(), [&any](const Entry& other) {
            return other.device == any.name;
        });
        if (!any.file.empty() && !isTaken)
            all.push_back({.device = any.name, .description = "the chip in " + any.file});
    }
    return all;
}

chips::ChipPtr LibraryChips::chipOf(std::string_view device) const {
    if (chips::ChipPtr embedded = embeddedChipSource().chipOf(device))
        return embedded;
    return library_.isUsers(device) ? library_.refreshed(device) : nullptr;
}

std::unique_ptr<Device> makeBenchDevice(std::string_view name, const std::vector<Reply>& replies) {
    chips::ChipLibrary library;
    return makeDevice(name, replies, LibraryChips(library));
}

std::vector<std::string> benchDeviceNames() {
    chips::ChipLibrary library;
    return deviceNames(LibraryChips(library));
}

std::string benchDeviceDescription(std::string_view name) {
    chips::ChipLibrary library;
    return deviceDescription(name, LibraryChips(library));
}

} // namespace bitlux
