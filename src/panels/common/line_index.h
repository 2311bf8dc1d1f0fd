#pragma once

#include "chips/description.h"

#include <functional>
#include <map>
#include <string>
#include <string_view>

namespace bitlux {

/// What a line of a sequence does: it writes a register, reads a view, or sends a command.
struct LineMeaning {
    const chips::Register* written = nullptr;
    const chips::View* read = nullptr;
    const chips::Line* line = nullptr; ///< the line with this name
    const chips::Command* command = nullptr;
};

/// The lines that a chip's description defines, by name.
class LineIndex {
public:
    /// The chip outlives it.
    explicit LineIndex(const chips::Chip& chip);

    /// Null for an unknown name.
    [[nodiscard]] const LineMeaning* find(std::string_view name) const;

private:
    void add(const chips::Line& line, const LineMeaning& meaning);

    std::map<std::string, LineMeaning, std::less<>> meanings_;
};

} // namespace bitlux
