#include "platform/linux/linux_adapter_host.h"

#include "platform/failure.h"
#include "platform/linux/node_holders.h"
#include "platform/printable.h"

#include <algorithm>
#include <utility>

#include <fmt/format.h>
#include <fmt/ranges.h>

namespace bitlux {

namespace {

[[noreturn]] void fail(const std::string& text) {
    throw Failure(Failure::Kind::PortUnusable, text);
}

std::string thousands(int number) {
    std::string groups;
    for (; number >= 1000; number /= 1000)
        groups = fmt::format(",{:03}{}", number % 1000, groups);
    return fmt::format("{}{}", number, groups);
}

FtdiRate rateFor(const Adapter& adapter, const FtdiChip& chip) {
    if (const std::optional<FtdiRate> rate = nearestRate(chip, adapter.clock))
        return *rate;
    fail(fmt::format("The adapter {} cannot put out {} bytes a second. Choose a clock from {} to "
                     "{} Hz.",
                     printable(adapter.name(), longestAdapterName), thousands(adapter.clock),
                     thousands(chip.slowest), thousands(chip.fastest)));
}

void demandChannel(const FtdiDevice& device, int channel, const std::string& name) {
    if (channel < device.chip->channels)
        return;
    fail(fmt::format("The adapter {} has no channel {}, which adapters.conf gives it. Its last is "
                     "{}.",
                     name, static_cast<char>('A' + channel),
                     static_cast<char>('A' + device.chip->channels - 1)));
}

} // namespace

AdapterWishes wishesFor(const FtdiDevice& device, const AdapterSettings& files) {
    return files.of(device.serial.empty() ? device.place : device.serial);
}

LinuxAdapterHost::LinuxAdapterHost(AdapterPlaces places, AdapterChoice choice)
    : places_(std::move(places)), choice_(std::move(choice)) {}

std::vector<FtdiDevice> LinuxAdapterHost::devices() const {
    std::vector<FtdiDevice> found = findFtdiDevices(places_.devices);
    if (!choice_.serial.empty())
        std::erase_if(found, [this](const auto& any) { return any.serial != choice_.serial; });
    return found;
}

Adapter LinuxAdapterHost::adapterOf(const FtdiDevice& device, const AdapterSettings& files) const {
    const AdapterWishes wishes = wishesFor(device, files);
    Adapter adapter{.type = device.type, .serial = device.serial, .place = device.place};
    adapter.wiring = wishes.wiring.value_or(adapter.wiring);
    adapter.wiring.cutFrom(device.lines);
    adapter.clock = choice_.clock.value_or(wishes.clock.value_or(adapter.clock));
    adapter.keepsLines = choice_.keepsLines || wishes.keepsLines;
    return adapter;
}

std::vector<Adapter> LinuxAdapterHost::find() {
    std::vector<Adapter> found;
    const std::vector<FtdiDevice> present = devices();
    if (present.empty())
        return found;
    const AdapterSettings files(places_.settingsFiles);
    for (const FtdiDevice& device : present)
        found.push_back(adapterOf(device, files));
    return found;
}

std::unique_ptr<AdapterLink> LinuxAdapterHost::open(const Adapter& adapter) {
    const std::string name = printable(adapter.name(), longestAdapterName);
    const std::vector<FtdiDevice> present = devices();
    const auto device = std::find_if(present.begin(), present.end(), [&](const FtdiDevice& any) {
        return any.serial == adapter.serial && any.place == adapter.place;
    });
    if (device == present.end())
        fail(fmt::format("The adapter {} is not plugged in. Plug it in, then try again.", name));
    const AdapterWishes wishes = wishesFor(*device, AdapterSettings(places_.settingsFiles));
    if (!wishes.problem.empty())
        fail(fmt::format("The adapter {} has wrong settings. {}", name, wishes.problem));
    demandChannel(*device, wishes.channel, name);
    const FtdiRate rate = rateFor(adapter, *device->chip);
    demandFreeTty(*device, wishes.channel, name);
    auto connection = std::make_unique<FtdiConnection>(ftdiNode(*device, places_.nodes),
                                                       *device->chip, wishes.channel);
    if (connection->status() != UsbStatus::Success)
        failToOpen(connection->status(), *device, name);
    return std::make_unique<FtdiLink>(adapter, std::move(connection), rate, places_.timeout);
}

void LinuxAdapterHost::demandFreeTty(const FtdiDevice& device, int channel,
                                     const std::string& name) const {
    const std::string tty = ttyOf(device, channel);
    if (tty.empty())
        return;
    const std::string node = "/dev/" + tty;
    const std::string holders = holdersText(findHolders(node, places_.processes));
    if (!holders.empty())
        fail(fmt::format("The adapter {} is in use as {} by {}. Close it, then try again.", name,
                         node, holders));
}

void LinuxAdapterHost::failToOpen(UsbStatus status, const FtdiDevice& device,
                                  const std::string& name) const {
    switch (status) {
    case UsbStatus::NoRights:
        fail(fmt::format("You have no permission to use the adapter {}. \"bitlux doctor\" tells "
                         "what is missing: a udev rule, or the group plugdev.",
                         name));
    case UsbStatus::Busy: {
        const std::string holders = holdersText(findHolders(ftdiNode(device), places_.processes));
        fail(fmt::format("The adapter {} is in use by {}. Close it, then try again.", name,
                         holders.empty() ? "a program that you may not see" : holders));
    }
    case UsbStatus::Gone:
        fail(fmt::format("The adapter {} is not plugged in. Plug it in, then try again.", name));
    default:
        fail(fmt::format("The adapter {} cannot be opened. Unplug it and plug it in again, then "
                         "try again.",
                         name));
    }
}

void LinuxAdapterHost::demandChosen() {
    if (!choice_.isDemanded || !devices().empty())
        return;
    std::vector<std::string> others;
    for (const FtdiDevice& device : findFtdiDevices(places_.devices))
        others.push_back(printable(
            Adapter{.type = device.type, .serial = device.serial, .place = device.place}.name(),
            longestAdapterName));
    const std::string there =
        others.empty() ? "none is plugged in" : fmt::format("there is {}", fmt::join(others, ", "));
    if (choice_.serial.empty())
        fail("There is no adapter. Plug one in; \"bitlux doctor\" tells what is missing.");
    fail(fmt::format("There is no adapter with the serial number {}; {}.",
                     printable(choice_.serial, longestAdapterName), there));
}

} // namespace bitlux
