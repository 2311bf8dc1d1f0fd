#pragma once

#include "chips/description.h"

#include <string>
#include <string_view>
#include <vector>

namespace bitlux {

/// Where the bench finds chips, by the names of their devices.
class ChipSource {
public:
    struct Entry {
        std::string device;
        std::string description; ///< one line for the user
    };

    virtual ~ChipSource() = default;

    /// All devices. It is called often, for lists, so it should not read known files again.
    [[nodiscard]] virtual std::vector<Entry> entries() const = 0;
    /// The chip that has a device of this name; null when there is none. Raises Failure when the
    /// chip's file cannot be read.
    [[nodiscard]] virtual chips::ChipPtr chipOf(std::string_view device) const = 0;
};

/// The chips of the product.
const ChipSource& embeddedChipSource();

} // namespace bitlux
