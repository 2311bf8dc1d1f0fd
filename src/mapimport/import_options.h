#pragma once

#include "chips/bit_list.h"

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace bitlux::mapimport {

/// Keys of `[word]` of a chip's file, as they are written there. What has no value is left to the
/// user.
struct WordKeys {
    std::optional<int> bits;
    std::optional<int> type;
    bool packed = false;
    chips::BitList address;
    chips::BitList data;
    std::optional<std::uint64_t> write;
    std::optional<std::uint64_t> read;
    bool answersNext = false;
    std::optional<std::uint64_t> fetch;
};

struct ImportOptions {
    WordKeys word;
    std::vector<std::string> only; ///< peripherals or address blocks; all when it is empty
    std::uint64_t base = 0;        ///< address in the source that is 0 in the chip
    std::uint64_t step = 1;        ///< addresses of the source for each one of the chip; not 0
    std::string name;              ///< of the chip, where it is not that of the file
};

} // namespace bitlux::mapimport
