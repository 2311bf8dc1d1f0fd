#pragma once

#include "wired_port.h"

#include <csignal>
#include <cstdint>
#include <vector>

namespace bitlux::test {

/// The I/O ports of a machine that grants access to them, without touching any. While it lives,
/// ioperm() asks it, and the processor's port instructions that trap are carried out on its
/// registers. One at a time.
class TrappedPorts {
public:
    static constexpr std::int16_t base = 0x378;

    TrappedPorts();
    ~TrappedPorts();
    TrappedPorts(const TrappedPorts&) = delete;
    TrappedPorts& operator=(const TrappedPorts&) = delete;

    /// Makes ioperm() fail with `error`.
    void refuse(int error) { refusal_ = error; }

    /// The ports that are open, in ascending order.
    [[nodiscard]] std::vector<int> open() const;
    /// The ports that were accessed without being open.
    [[nodiscard]] const std::vector<int>& trespassed() const { return trespassed_; }

    /// What ioperm() answers.
    int permit(unsigned long first, unsigned long count, bool on);

    WiredPort wires;

private:
    static void onTrap(int signal, siginfo_t* information, void* context);
    bool emulate(ucontext_t& context);
    [[nodiscard]] bool check(int port);
    [[nodiscard]] std::uint8_t in(int port);
    void out(int port, std::uint8_t value);

    struct sigaction previous_ {};
    int refusal_ = 0;
    std::vector<bool> open_;
    std::vector<int> trespassed_;
};

} // namespace bitlux::test
