#pragma once

#include <cstdint>

namespace bitlux {

/// I/O ports reached by the processor's own instructions, past every driver. Opening and closing
/// access is a system call, the instruction in between is not. Access belongs to the thread that
/// opened it.
///
/// Raises Failure (PortUnusable) where the system does not grant access.
class DirectPort {
public:
    /// Opens the ports from `first` to `last`.
    void enable(std::int16_t first, std::int16_t last);
    /// Closes the ports from `first` to `last`.
    void disable(std::int16_t first, std::int16_t last);

    /// Both open a port that is not open for as long as the access takes.
    std::uint8_t read(std::int16_t address);
    void write(std::int16_t address, std::uint8_t value);

private:
    [[nodiscard]] bool isOpen(std::int16_t address) const;

    // the range opened last; empty while the first stands behind the last
    std::uint16_t first_ = 1;
    std::uint16_t last_ = 0;
};

} // namespace bitlux
