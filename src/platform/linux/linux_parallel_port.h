#pragma once

#include "platform/linux/direct_port.h"
#include "platform/linux/parport_list.h"
#include "platform/linux/ppdev_port.h"
#include "platform/parallel_port.h"

#include <cstdint>
#include <optional>
#include <string>

namespace bitlux {

/// The parallel ports of this machine.
///
/// Normally an access opens and claims the port that owns the address, and the port stays claimed
/// until an access goes to another one, the mode is switched, or the object is destroyed. A port
/// that was lost is opened again by the next access. Fast mode goes past the drivers, claims
/// nothing, and reaches any I/O port.
class LinuxParallelPort : public ParallelPort {
public:
    explicit LinuxParallelPort(std::string listFolder = "/proc/sys/dev/parport",
                               std::string deviceFolder = "/dev");

    std::int32_t Inp(std::int16_t address) override;
    void Outp(std::int16_t address, std::int16_t value) override;
    /// Works in fast mode only.
    void EnablePorts(std::int16_t first, std::int16_t last) override;
    /// Works in fast mode only.
    void DisablePorts(std::int16_t first, std::int16_t last) override;
    /// LPT1 is the kernel's port 0, and so on.
    std::int16_t GetLPTPortAddress(std::int16_t number) override;
    void SetFastMode(std::int32_t mode) override;

private:
    [[nodiscard]] bool isFast() const { return GetFastMode() == 1; }
    template <typename Operation>
    auto throughDriver(std::int16_t address, Operation operation);
    void open(std::int16_t address);

    ParportList list_;
    std::string deviceFolder_;
    DirectPort direct_;
    std::optional<PpdevPort> port_;
    std::int16_t base_ = 0; ///< of `port_`
};

} // namespace bitlux
