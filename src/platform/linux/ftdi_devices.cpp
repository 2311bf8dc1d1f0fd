#include "platform/linux/ftdi_devices.h"

#include "platform/linux/kernel_values.h"

#include <algorithm>
#include <array>
#include <filesystem>
#include <optional>
#include <string_view>

#include <fmt/format.h>

namespace bitlux {

namespace {

namespace fs = std::filesystem;

/// A chip of the family FT-X, of which most adapters tell the name.
struct NamedChip {
    std::string_view name;
    int lines;
};
constexpr std::array namedChips{NamedChip{"FT230X", 4}, NamedChip{"FT231X", 8},
                                NamedChip{"FT234X", 4}, NamedChip{"FT240X", 8}};

void nameChip(FtdiDevice& device, std::string_view product) {
    device.type = device.chip->name;
    if (device.type != "FT-X")
        return;
    for (const NamedChip& chip : namedChips)
        if (product.starts_with(chip.name)) {
            device.type = chip.name;
            device.lines = chip.lines;
        }
}

std::optional<FtdiDevice> deviceAt(const fs::path& path) {
    const std::string folder = path.string();
    const auto vendor = kernelNumber<std::uint16_t>(folder + "/idVendor", 16);
    const auto product = kernelNumber<std::uint16_t>(folder + "/idProduct", 16);
    if (!vendor || !product || !isFtdi({*vendor, *product}))
        return std::nullopt;
    const auto bus = kernelNumber<int>(folder + "/busnum", 10);
    const auto address = kernelNumber<int>(folder + "/devnum", 10);
    const auto release = kernelNumber<std::uint16_t>(folder + "/bcdDevice", 16);
    const FtdiChip* const chip = release ? findFtdiChip(*release) : nullptr;
    if (!bus || *bus <= 0 || !address || *address <= 0 || chip == nullptr)
        return std::nullopt;
    FtdiDevice device{.chip = chip,
                      .numbers = {*vendor, *product},
                      .bus = *bus,
                      .address = *address,
                      .type = {},
                      .serial = kernelLine(folder + "/serial"),
                      .place = path.filename().string(),
                      .folder = folder};
    nameChip(device, kernelLine(folder + "/product"));
    return device;
}

/// The first entry of a folder that `isWanted` accepts the name of; empty for none.
template <typename Predicate>
fs::path entryOf(const fs::path& folder, Predicate isWanted) {
    std::error_code error;
    for (fs::directory_iterator entry(folder, error), end; !error && entry != end;
         entry.increment(error))
        if (isWanted(entry->path().filename().string()))
            return entry->path();
    return {};
}

} // namespace

std::vector<FtdiDevice> findFtdiDevices(const std::string& devices) {
    std::vector<FtdiDevice> found;
    std::error_code error;
    for (fs::directory_iterator entry(devices, error), end; !error && entry != end;
         entry.increment(error))
        if (std::optional<FtdiDevice> device = deviceAt(entry->path()))
            found.push_back(std::move(*device));
    std::sort(found.begin(), found.end(),
              [](const FtdiDevice& a, const FtdiDevice& b) { return a.place < b.place; });
    return found;
}

std::string ftdiNode(const FtdiDevice& device, const std::string& nodes) {
    return fmt::format("{}/{:03}/{:03}", nodes, device.bus, device.address);
}

std::string ttyOf(const FtdiDevice& device, int channel) {
    const std::string start = fs::path(device.folder).filename().string() + ":";
    const std::string end = fmt::format(".{}", channel);
    const fs::path interface = entryOf(device.folder, [&](const std::string& name) {
        return name.starts_with(start) && name.ends_with(end);
    });
    if (interface.empty())
        return {};
    return entryOf(interface, [](const std::string& name) { return name.starts_with("ttyUSB"); })
        .filename()
        .string();
}

} // namespace bitlux
