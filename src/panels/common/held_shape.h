#pragma once

#include "session/session.h"

#include <cstdint>
#include <vector>

namespace bitlux {

/// The shape of the words that a panel sets while it is open, and the one that it gives back.
class HeldShape {
public:
    /// The session outlives it.
    explicit HeldShape(Session& session) : session_(session) {}

    /// Remembers what is in force.
    void keep() {
        length_ = session_.SPIWordLength;
        type_ = session_.SPIType;
        word_ = session_.WordToSend;
    }
    /// Words of so many bits, all 0, in this type from now on.
    void set(std::int16_t bits, std::int16_t type) {
        session_.SPIWordLength = bits;
        session_.WordToSend.assign(static_cast<std::size_t>(bits), 0);
        session_.SPIType = type;
    }
    /// Puts back what was kept.
    void giveBack() {
        session_.SPIWordLength = length_;
        session_.SPIType = type_;
        session_.WordToSend = word_;
    }

private:
    Session& session_;
    std::int16_t length_ = 0;
    std::int16_t type_ = 0;
    std::vector<std::int16_t> word_;
};

} // namespace bitlux
