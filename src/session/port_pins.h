#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <stdexcept>
#include <string>

namespace bitlux {

/// Shadow register of a port register: the level and the extra pin's name of each bit. It is the
/// only record of the pins; the register itself is never read back.
template <int Bits>
class PortPins {
public:
    /// 0 or 1; raises std::out_of_range beyond the register.
    [[nodiscard]] std::int16_t level(int bit) const {
        return static_cast<std::int16_t>((value_ & mask(bit)) != 0);
    }
    /// Any level but 0 counts as 1.
    void setLevel(int bit, std::int16_t level) {
        value_ = static_cast<std::uint8_t>(level != 0 ? value_ | mask(bit) : value_ & ~mask(bit));
    }

    /// Name of the extra pin on this bit, empty when the bit is free.
    [[nodiscard]] const std::string& name(int bit) const { return names_.at(index(bit)); }
    void setName(int bit, const std::string& name) { names_.at(index(bit)) = name; }

    /// All levels, as the value of the register.
    [[nodiscard]] std::uint8_t value() const { return value_; }
    void setValue(std::uint8_t value) {
        value_ = static_cast<std::uint8_t>(value & ((1U << Bits) - 1U));
    }

    /// The register value of one bit alone; raises std::out_of_range beyond the register.
    static std::uint8_t mask(int bit) {
        if (bit < 0 || bit >= Bits)
            throw std::out_of_range("no such bit in the register");
        return static_cast<std::uint8_t>(1U << static_cast<unsigned>(bit));
    }

private:
    static std::size_t index(int bit) { return static_cast<std::size_t>(bit); }
    std::array<std::string, Bits> names_;
    std::uint8_t value_ = 0;
};

} // namespace bitlux
