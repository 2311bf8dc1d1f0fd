#include "trapped_ports.h"

#include <cerrno>

#include <sys/io.h>
#include <sys/ucontext.h>

namespace bitlux::test {

namespace {

constexpr std::size_t portCount = 0x10000;
constexpr std::uint8_t inAlDx = 0xEC;
constexpr std::uint8_t outDxAl = 0xEE;

TrappedPorts* current = nullptr;

} // namespace

// The trap handler allocates: the instruction that trapped stands between two calls, never inside
// the allocator.

TrappedPorts::TrappedPorts() : open_(portCount, false) {
    current = this;
    struct sigaction action {};
    action.sa_sigaction = &onTrap;
    action.sa_flags = SA_SIGINFO;
    ::sigaction(SIGSEGV, &action, &previous_);
}

TrappedPorts::~TrappedPorts() {
    ::sigaction(SIGSEGV, &previous_, nullptr);
    current = nullptr;
}

std::vector<int> TrappedPorts::open() const {
    std::vector<int> ports;
    for (std::size_t port = 0; port < portCount; ++port)
        if (open_[port])
            ports.push_back(static_cast<int>(port));
    return ports;
}

int TrappedPorts::permit(unsigned long first, unsigned long count, bool on) {
    if (refusal_ != 0)
        return refusal_;
    if (count == 0 || first >= portCount || count > portCount - first)
        return EINVAL;
    for (unsigned long port = first; port < first + count; ++port)
        open_[port] = on;
    return 0;
}

void TrappedPorts::onTrap(int, siginfo_t*, void* context) {
    if (current != nullptr && current->emulate(*static_cast<ucontext_t*>(context)))
        return;
    ::signal(SIGSEGV, SIG_DFL); // a fault of another kind happens again, and ends the program
}

bool TrappedPorts::emulate(ucontext_t& context) {
    auto& registers = context.uc_mcontext.gregs;
    // NOLINTNEXTLINE(performance-no-int-to-ptr): a register holds the address
    const auto opcode = *reinterpret_cast<const std::uint8_t*>(registers[REG_RIP]);
    const auto port = static_cast<int>(registers[REG_RDX] & 0xFFFF);
    if (opcode == inAlDx)
        registers[REG_RAX] = (registers[REG_RAX] & ~0xFFLL) | in(port);
    else if (opcode == outDxAl)
        out(port, static_cast<std::uint8_t>(registers[REG_RAX] & 0xFF));
    else
        return false;
    ++registers[REG_RIP];
    return true;
}

bool TrappedPorts::check(int port) {
    const bool granted = open_[static_cast<std::size_t>(port)];
    if (!granted)
        trespassed_.push_back(port);
    return granted && port >= base && port <= base + 2;
}

std::uint8_t TrappedPorts::in(int port) {
    return check(port) ? wires.read(port - base) : std::uint8_t{0xFF};
}

void TrappedPorts::out(int port, std::uint8_t value) {
    if (check(port))
        wires.write(port - base, value);
}

} // namespace bitlux::test

// Stands in for the one of the C library in this executable.
// NOLINTNEXTLINE(readability-inconsistent-declaration-parameter-name)
extern "C" int ioperm(unsigned long first, unsigned long count, int on) noexcept {
    using bitlux::test::current;
    const int error = current != nullptr ? current->permit(first, count, on != 0) : EPERM;
    if (error == 0)
        return 0;
    errno = error;
    return -1;
}
