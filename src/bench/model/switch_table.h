#pragma once

#include "bench/chip.h"
#include "bench/model/model_store.h"

#include <string>
#include <vector>

namespace bitlux {

/// What a user of the bench may turn at a chip, and the bits that stand for it.
class SwitchTable {
public:
    /// A switch for each bit of `word` that has a caption, bit 0 first; "-" is none. Blanks around
    /// names are left out, and a name that the group has already gets the number of its bit.
    void add(const std::string& group, const std::vector<std::string>& captions,
             std::uint64_t& word);

    [[nodiscard]] const std::vector<ChipSwitch>& switches() const { return switches_; }
    [[nodiscard]] const StateBit& bit(std::size_t index) const { return bits_.at(index); }

private:
    [[nodiscard]] bool has(const ChipSwitch& one) const;

    std::vector<ChipSwitch> switches_;
    std::vector<StateBit> bits_;
};

} // namespace bitlux
