#pragma once

#include <cstdint>
#include <optional>
#include <string>

namespace bitlux {

/// The parallel ports that the kernel knows. Every query reads the list again, so that a port whose
/// driver is loaded later appears without a restart.
class ParportList {
public:
    explicit ParportList(std::string folder = "/proc/sys/dev/parport");

    /// Base address of port `number`, counted from 0; 0 when there is no such port, or when it
    /// has no registers of its own that a 16-bit address reaches.
    [[nodiscard]] std::uint16_t baseAddress(int number) const;

    struct Port {
        int number;
        std::uint16_t baseAddress;
    };

    /// The port that has one of its three registers at `address`.
    [[nodiscard]] std::optional<Port> owner(std::uint16_t address) const;

private:
    std::string folder_;
};

} // namespace bitlux
