#pragma once

#include <stdexcept>
#include <string>

namespace bitlux {

/// A failure that ends the running handler. The dispatcher of handlers shows its text in a plain
/// box with the name of the handler, and the program continues (forms/form_set.h).
///
/// The text is a sentence or a short phrase for the user, without a final line break.
class Failure : public std::runtime_error {
public:
    enum class Kind {
        Overflow,     ///< a number does not fit its variable
        OutOfRange,   ///< an index, a length or a choice outside what exists
        Conversion,   ///< a text that is not a valid value
        File,         ///< a file or folder that cannot be read or written
        PortUnusable, ///< a parallel port that cannot be opened or was lost
        LinkFailed,   ///< a dongle that cannot be opened, was lost, or does not answer
    };

    Failure(Kind kind, const std::string& text) : std::runtime_error(text), kind_(kind) {}

    [[nodiscard]] Kind kind() const noexcept { return kind_; }

private:
    Kind kind_;
};

} // namespace bitlux
