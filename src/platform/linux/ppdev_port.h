#pragma once

#include <cstdint>
#include <string>

#include <sys/types.h>

namespace bitlux {

/// One parallel port, held exclusively through the kernel's driver for user programs.
///
/// Values are those of the hardware registers: the driver inverts nothing, so the inversion of
/// control bits 0, 1 and 3 and of status bit 7 is left to the hardware. Three limits come with the
/// driver: only control bits 0 to 3 are reached (4 and 5 are its own: interrupt and direction), the
/// status cannot be written, and the control register reads back what was last written. Claiming a
/// port sets its control register to 0x0C; the data lines keep their levels.
///
/// Raises Failure (PortUnusable) where the port cannot be opened or claimed, and when it is lost.
class PpdevPort {
public:
    /// Opens and claims the port behind a device node such as "/dev/parport0".
    explicit PpdevPort(const std::string& node);
    ~PpdevPort();
    PpdevPort(const PpdevPort&) = delete;
    PpdevPort& operator=(const PpdevPort&) = delete;

    /// Reads the register at an offset of 0 to 2 from the base.
    std::uint8_t read(int offset);
    /// Writes the register at an offset of 0 to 2 from the base; the status ignores it.
    void write(int offset, std::uint8_t value);
    /// Fails when the port has been removed; the driver would go on accepting everything and
    /// returning zeros. Costs a stat of the node.
    void requirePresent() const;

private:
    class Descriptor {
    public:
        explicit Descriptor(int number) : number_(number) {}
        ~Descriptor();
        Descriptor(const Descriptor&) = delete;
        Descriptor& operator=(const Descriptor&) = delete;
        [[nodiscard]] int number() const { return number_; }

    private:
        int number_;
    };

    /// Identity of the file; another one may have taken its name.
    struct Identity {
        dev_t device;
        ino_t number;
        bool operator==(const Identity&) const = default;
    };

    static Identity identityOf(const std::string& node);
    void claim();
    [[noreturn]] void failLost(const char* reason) const;
    void access(unsigned long request, void* argument);

    std::string node_;
    Descriptor descriptor_;
    Identity identity_;
};

} // namespace bitlux
