#pragma once

#include "bench/chip.h"
#include "bench/model/model_store.h"

#include <set>
#include <string>
#include <utility>
#include <vector>

namespace bitlux {

/// The switches of a chip on the bench, and their bits.
class SwitchTable {
public:
    /// A switch for each bit of `word` that has a caption, from bit `first` on; "-" is none. Blanks
    /// around names are removed; a duplicate name in the group gets the number of its bit.
    void add(const std::string& group, const std::vector<std::string>& captions,
             std::uint64_t& word, int first = 0);

    [[nodiscard]] const std::vector<ChipSwitch>& switches() const { return switches_; }
    [[nodiscard]] const StateBit& bit(std::size_t index) const { return bits_.at(index); }

private:
    std::vector<ChipSwitch> switches_;
    std::vector<StateBit> bits_;
    std::set<std::pair<std::string, std::string>> taken_; ///< groups and names
};

} // namespace bitlux
