#include "platform/linux/direct_port.h"

#include "platform/failure.h"

#include <cerrno>
#include <cstring>
#include <string>

#include <fmt/format.h>

#if defined(__x86_64__) || defined(__i386__)
#include <sys/io.h>
#endif

namespace bitlux {

namespace {

std::uint16_t portNumber(std::int16_t address) {
    return static_cast<std::uint16_t>(address);
}

[[noreturn]] void fail(const std::string& text) {
    throw Failure(Failure::Kind::PortUnusable, text);
}

#if defined(__x86_64__) || defined(__i386__)

[[noreturn]] void failToPermit(std::uint16_t first, int error) {
    switch (error) {
    case EPERM:
        fail(fmt::format(
            "Direct access to the port at 0x{:X} was refused. It needs root or the "
            "capability CAP_SYS_RAWIO: start the program with sudo, or switch fast mode off.",
            first));
    case ENOSYS:
        fail("This kernel has no direct port access (ioperm). Switch fast mode off.");
    default:
        fail(fmt::format("Direct access to the port at 0x{:X} failed: {}. Check the address, or "
                         "switch fast mode off.",
                         first, std::strerror(error)));
    }
}

void permit(std::uint16_t first, std::uint16_t last, bool on) {
    const long count = long{last} - long{first} + 1;
    if (::ioperm(first, static_cast<unsigned long>(count), on ? 1 : 0) != 0)
        failToPermit(first, errno);
}

std::uint8_t in(std::int16_t address) {
    std::uint8_t value;
    asm volatile("inb %w1, %b0" : "=a"(value) : "d"(portNumber(address)) : "memory");
    return value;
}

void out(std::int16_t address, std::uint8_t value) {
    asm volatile("outb %b0, %w1" : : "a"(value), "d"(portNumber(address)) : "memory");
}

#else

void permit(std::uint16_t, std::uint16_t, bool) {
    fail("Direct port access needs an x86 processor, and this is none. Switch fast mode off.");
}

// never reached: no port can be opened

std::uint8_t in(std::int16_t) {
    return 0;
}

void out(std::int16_t, std::uint8_t) {}

#endif

} // namespace

void DirectPort::enable(std::int16_t first, std::int16_t last) {
    permit(portNumber(first), portNumber(last), true);
    first_ = portNumber(first);
    last_ = portNumber(last);
}

void DirectPort::disable(std::int16_t first, std::int16_t last) {
    first_ = 1;
    last_ = 0;
    permit(portNumber(first), portNumber(last), false);
}

std::uint8_t DirectPort::read(std::int16_t address) {
    if (isOpen(address))
        return in(address);
    enable(address, address);
    const std::uint8_t value = in(address);
    disable(address, address);
    return value;
}

void DirectPort::write(std::int16_t address, std::uint8_t value) {
    if (isOpen(address)) {
        out(address, value);
        return;
    }
    enable(address, address);
    out(address, value);
    disable(address, address);
}

bool DirectPort::isOpen(std::int16_t address) const {
    return portNumber(address) >= first_ && portNumber(address) <= last_;
}

} // namespace bitlux
