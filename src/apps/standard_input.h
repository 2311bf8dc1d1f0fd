#pragma once

#include "bench/interruptible.h"

#include <optional>
#include <string>

namespace bitlux {

/// The lines of the standard input. Waiting for a line can be interrupted.
class StandardInput {
public:
    /// `interruption` outlives this.
    explicit StandardInput(const Interruption& interruption) : interruption_(interruption) {}

    /// The next line without its end; nothing at the end of the input. Input that cannot be read
    /// raises Failure (File).
    std::optional<std::string> line();
    /// Whether a user may be typing, since it is a terminal.
    [[nodiscard]] bool isWaiting() const { return waiting_; }

private:
    bool fill();

    const Interruption& interruption_;
    std::string buffer_;
    bool ended_ = false;
    bool waiting_ = false;
};

} // namespace bitlux
