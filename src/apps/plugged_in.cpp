#include "apps/plugged_in.h"

#include "platform/linux/linux_adapter_host.h"
#include "platform/linux/parport_list.h"
#include "platform/printable.h"

#include <filesystem>

#include <fmt/format.h>

namespace bitlux {

namespace {

constexpr std::size_t longestDeviceName = 60;

void addPorts(const Machine& machine, std::vector<PluggedIn>& found) {
    const ParportList ports(machine.root + "/proc/sys/dev/parport");
    constexpr int mostPorts = 3;
    for (int number = 0; number < mostPorts; ++number)
        if (const std::uint16_t address = ports.baseAddress(number); address != 0)
            found.push_back({fmt::format("--port lpt{}", number + 1),
                             fmt::format("parallel port at 0x{:X}", address)});
}

bool isDongle(const Machine& machine, const DongleNumbers& numbers, const UsbCandidate& candidate) {
    return numbers.contains(candidate.numbers) ||
           (!isFtdi(candidate.numbers) && machine.mayOpen(usbNode(candidate)) && machine.isDongle &&
            machine.isDongle(candidate));
}

void addDongles(const Machine& machine, std::vector<PluggedIn>& found) {
    const DongleNumbers numbers(machine.dongleFiles);
    for (const UsbCandidate& candidate : findUsbCandidates(machine.root + "/sys/bus/usb/devices"))
        if (isDongle(machine, numbers, candidate))
            found.push_back(
                {"--bus dongle" +
                     (candidate.serial.empty()
                          ? ""
                          : " --serial " + printable(candidate.serial, longestDeviceName)),
                 fmt::format("USB dongle at {}",
                             std::filesystem::path(candidate.folder).filename().string())});
}

void addAdapters(const Machine& machine, std::vector<PluggedIn>& found) {
    AdapterPlaces places;
    places.devices = machine.root + "/sys/bus/usb/devices";
    places.settingsFiles = machine.adapterFiles;
    for (const Adapter& adapter : LinuxAdapterHost(places).find())
        found.push_back(
            {"--bus ftdi" +
                 (adapter.serial.empty() ? "" : ":" + printable(adapter.serial, longestDeviceName)),
             fmt::format("{} at {} with the pins {}", adapter.type, adapter.place,
                         adapter.wiring.pinsText())});
}

} // namespace

std::vector<PluggedIn> findPluggedIn(const Machine& machine) {
    std::vector<PluggedIn> found;
    addPorts(machine, found);
    addDongles(machine, found);
    addAdapters(machine, found);
    return found;
}

} // namespace bitlux
