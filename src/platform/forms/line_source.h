#pragma once

#include <cstddef>
#include <string>

namespace bitlux::forms {

/// The lines of a list, made when they are displayed.
class LineSource {
public:
    virtual ~LineSource() = default;
    [[nodiscard]] virtual std::size_t size() const = 0;
    /// `index` is below size().
    [[nodiscard]] virtual std::string line(std::size_t index) const = 0;
};

} // namespace bitlux::forms
