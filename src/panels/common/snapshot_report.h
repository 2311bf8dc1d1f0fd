#pragma once

#include "registers/register_snapshot.h"

#include <string>
#include <vector>

namespace bitlux {

/// What came of the last comparison of a chip with a snapshot, or of writing one.
struct SnapshotReport {
    std::string title;   ///< what was done
    std::string heading; ///< the result in a sentence or two
    // What the two values of a line are.
    std::string before;
    std::string after;
    std::vector<SnapshotDifference> lines; ///< of a catalog that outlives this

    /// The heading, and a line for each register that differs, with its fields.
    [[nodiscard]] std::string text() const;
};

} // namespace bitlux
