#include "platform/linux/linux_parallel_port.h"

#include "platform/failure.h"

#include <utility>

#include <fmt/format.h>

namespace bitlux {

LinuxParallelPort::LinuxParallelPort(std::string listFolder, std::string deviceFolder)
    : ParallelPort(true), list_(std::move(listFolder)), deviceFolder_(std::move(deviceFolder)) {}

template <typename Operation>
auto LinuxParallelPort::throughDriver(std::int16_t address, Operation operation) {
    if (!port_ || address < base_ || address > base_ + controlRegister)
        open(address);
    try {
        return operation(*port_, address - base_);
    } catch (const Failure&) {
        port_.reset();
        throw;
    }
}

std::int32_t LinuxParallelPort::Inp(std::int16_t address) {
    if (isFast())
        return direct_.read(address);
    return throughDriver(address, [](PpdevPort& port, int offset) { return port.read(offset); });
}

void LinuxParallelPort::Outp(std::int16_t address, std::int16_t value) {
    const auto byte = static_cast<std::uint8_t>(value & 0xFF);
    if (isFast())
        direct_.write(address, byte);
    else
        throughDriver(address, [=](PpdevPort& port, int offset) { port.write(offset, byte); });
}

void LinuxParallelPort::EnablePorts(std::int16_t first, std::int16_t last) {
    if (isFast())
        direct_.enable(first, last);
}

void LinuxParallelPort::DisablePorts(std::int16_t first, std::int16_t last) {
    if (isFast())
        direct_.disable(first, last);
}

std::int16_t LinuxParallelPort::GetLPTPortAddress(std::int16_t number) {
    return number >= 1 && number <= 3 ? list_.baseAddress(number - 1) : std::int16_t{0};
}

void LinuxParallelPort::SetFastMode(std::int32_t mode) {
    if (mode != GetFastMode())
        port_.reset();
    ParallelPort::SetFastMode(mode);
}

void LinuxParallelPort::open(std::int16_t address) {
    port_.reset();
    const std::optional<ParportList::Port> owner = list_.owner(address);
    if (!owner)
        throw Failure(Failure::Kind::PortUnusable,
                      fmt::format("There is no parallel port at 0x{:X}. Check the BIOS set-up, or "
                                  "load its driver with \"sudo modprobe parport_pc\".",
                                  static_cast<std::uint16_t>(address)));
    port_.emplace(fmt::format("{}/parport{}", deviceFolder_, owner->number));
    base_ = owner->baseAddress;
}

} // namespace bitlux
