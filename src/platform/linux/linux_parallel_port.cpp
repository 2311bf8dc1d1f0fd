#include "platform/linux/linux_parallel_port.h"

#include "platform/failure.h"

#include <utility>

#include <fmt/format.h>

namespace bitlux {

LinuxParallelPort::LinuxParallelPort(std::string listFolder, std::string deviceFolder)
    : ParallelPort(true), list_(std::move(listFolder)), deviceFolder_(std::move(deviceFolder)) {}

template <typename Operation>
auto LinuxParallelPort::orLose(Operation operation) {
    try {
        return operation(*port_);
    } catch (const Failure&) {
        port_.reset();
        throw;
    }
}

template <typename Operation>
auto LinuxParallelPort::throughDriver(std::int16_t address, Operation operation) {
    const auto unsignedAddress = static_cast<std::uint16_t>(address);
    if (!port_ || unsignedAddress < base_ || unsignedAddress > base_ + controlRegister)
        open(unsignedAddress);
    return orLose([&](PpdevPort& port) { return operation(port, unsignedAddress - base_); });
}

std::int32_t LinuxParallelPort::Inp(std::int16_t address) {
    return throughDriver(address, [](PpdevPort& port, int offset) { return port.read(offset); });
}

void LinuxParallelPort::Outp(std::int16_t address, std::int16_t value) {
    const auto byte = static_cast<std::uint8_t>(value & 0xFF);
    throughDriver(address, [this, byte](PpdevPort& port, int offset) {
        port.write(offset, byte);
        if (offset == controlRegister)
            control_[base_] = byte;
    });
}

std::int16_t LinuxParallelPort::GetLPTPortAddress(std::int16_t number) {
    return number >= 1 && number <= 3 ? static_cast<std::int16_t>(list_.baseAddress(number - 1))
                                      : std::int16_t{0};
}

void LinuxParallelPort::complete() {
    if (port_)
        orLose([](const PpdevPort& port) { port.requirePresent(); });
}

void LinuxParallelPort::open(std::uint16_t address) {
    port_.reset();
    const std::optional<ParportList::Port> owner = list_.owner(address);
    if (!owner)
        throw Failure(Failure::Kind::PortUnusable,
                      fmt::format("There is no parallel port at 0x{:X}. Check the BIOS set-up, or "
                                  "load its driver with \"sudo modprobe parport_pc\".",
                                  address));
    port_.emplace(fmt::format("{}/parport{}", deviceFolder_, owner->number));
    base_ = owner->baseAddress;
    if (const auto control = control_.find(base_); control != control_.end())
        orLose([&](PpdevPort& port) { port.write(controlRegister, control->second); });
}

} // namespace bitlux
