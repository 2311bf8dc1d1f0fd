#pragma once

#include <cstdint>
#include <optional>
#include <ostream>
#include <vector>

namespace bitlux::test {

/// A byte that arrived at a register of a port.
struct Written {
    int offset;
    std::uint8_t value;
    bool operator==(const Written&) const = default;
};

inline std::ostream& operator<<(std::ostream& stream, const Written& written) {
    return stream << '+' << written.offset << "=0x" << std::hex << int{written.value} << std::dec;
}

/// The registers of a parallel port with an SPI slave on its pins, mode 0, most significant bit
/// first. The slave takes its input on the rising clock and moves its output on the falling one.
class WiredPort {
public:
    static constexpr std::uint8_t clock = 0x01; // data lines
    static constexpr std::uint8_t input = 0x02;
    static constexpr std::uint8_t notSelect = 0x04;
    static constexpr std::uint8_t output = 0x40; // status line

    /// Loads what the slave shifts out: the lowest `bits` bits of `word`.
    void loadReply(unsigned word, int bits) {
        reply_ = word;
        replyBits_ = bits;
    }
    /// Ties every status line to one level.
    void stick(std::uint8_t status) { stuckStatus_ = status; }

    [[nodiscard]] unsigned received() const { return received_; }
    [[nodiscard]] const std::vector<Written>& written() const { return written_; }

    void write(int offset, std::uint8_t value) {
        written_.push_back({offset, value});
        if (offset == 0)
            moveDataLines(value);
        else if (offset == 2)
            control_ = value;
    }

    [[nodiscard]] std::uint8_t read(int offset) const {
        if (offset == 0)
            return data_;
        return offset == 1 ? status() : control_;
    }

private:
    void moveDataLines(std::uint8_t value) {
        const bool rises = (value & ~data_ & clock) != 0;
        const bool falls = (~value & data_ & clock) != 0;
        data_ = value;
        if ((value & notSelect) != 0)
            return;
        if (rises)
            received_ = received_ << 1 | ((value & input) != 0 ? 1U : 0U);
        if (falls)
            --replyBits_;
    }

    [[nodiscard]] std::uint8_t status() const {
        if (stuckStatus_)
            return *stuckStatus_;
        const bool high = replyBits_ > 0 && (reply_ >> (replyBits_ - 1) & 1U) != 0;
        return high ? output : std::uint8_t{0};
    }

    // what the kernel leaves on the lines when it registers a port is not 0
    std::uint8_t data_ = 0x5C;
    std::uint8_t control_ = 0x0C;
    unsigned reply_ = 0;
    int replyBits_ = 0;
    unsigned received_ = 0;
    std::optional<std::uint8_t> stuckStatus_;
    std::vector<Written> written_;
};

/// Clocks a word through a slave by two functions write(offset, value) and read(offset), and
/// returns the reply.
template <typename Write, typename Read>
unsigned exchange(unsigned word, int bits, Write write, Read read) {
    unsigned reply = 0;
    write(0, WiredPort::notSelect);
    for (int bit = bits - 1; bit >= 0; --bit) {
        const std::uint8_t level = (word >> bit & 1U) != 0 ? WiredPort::input : std::uint8_t{0};
        write(0, level);
        write(0, static_cast<std::uint8_t>(level | WiredPort::clock));
        reply = reply << 1 | ((read(1) & WiredPort::output) != 0 ? 1U : 0U);
    }
    write(0, WiredPort::notSelect);
    return reply;
}

} // namespace bitlux::test
