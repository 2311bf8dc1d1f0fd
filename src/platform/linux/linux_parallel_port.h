#pragma once

#include "platform/linux/parport_list.h"
#include "platform/linux/ppdev_port.h"
#include "platform/parallel_port.h"

#include <cstdint>
#include <map>
#include <optional>
#include <string>

namespace bitlux {

/// The parallel ports of this machine, through the kernel's driver for user programs.
///
/// An access opens and claims the port that owns the address, and the port stays claimed until an
/// access goes to another one or the object is destroyed. A port that was lost is opened again by
/// the next access. Claiming sets the control register; the value last written to it is then
/// written again. Direct access is never opened: the driver needs none.
class LinuxParallelPort : public ParallelPort {
public:
    explicit LinuxParallelPort(std::string listFolder = "/proc/sys/dev/parport",
                               std::string deviceFolder = "/dev");

    std::int32_t Inp(std::int16_t address) override;
    void Outp(std::int16_t address, std::int16_t value) override;
    void EnablePorts(std::int16_t, std::int16_t) override {}
    void DisablePorts(std::int16_t, std::int16_t) override {}
    /// LPT1 is the kernel's port 0, and so on. One from 0x8000 on is negative here.
    std::int16_t GetLPTPortAddress(std::int16_t number) override;
    void complete() override;

private:
    /// `operation` receives the port and the offset of the address from its base.
    template <typename Operation>
    auto throughDriver(std::int16_t address, Operation operation);
    template <typename Operation>
    auto orLose(Operation operation);
    void open(std::uint16_t address);

    ParportList list_;
    std::string deviceFolder_;
    std::optional<PpdevPort> port_;
    std::uint16_t base_ = 0;                        ///< of `port_`
    std::map<std::uint16_t, std::uint8_t> control_; ///< written last, by base address
};

} // namespace bitlux
