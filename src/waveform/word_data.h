#pragma once

#include "transfer/sent_words.h"

#include <bitset>
#include <cstdint>
#include <string>

namespace bitlux {

/// What travelled in a word that was kept, on either bus.
struct WordData {
    using Bits = std::bitset<SentWord::longest>;

    explicit WordData(const SentWord& word);

    int length = 0; ///< bits
    int type = 1;   ///< 1 to 8
    bool msbFirst = true;
    Bits sent; ///< bit 0 the least significant
    Bits received;

    /// Upper-case hexadecimal, one digit for each started group of four bits.
    [[nodiscard]] std::string hexOf(const Bits& bits) const;
    /// The lowest 64 bits.
    [[nodiscard]] static std::uint64_t numberOf(const Bits& bits);
};

} // namespace bitlux
