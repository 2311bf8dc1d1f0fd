#pragma once

namespace bitlux {

/// The tool of the platform that shows what the machine consists of.
class SystemInformation {
public:
    virtual ~SystemInformation() = default;
    [[nodiscard]] virtual bool available() const = 0;
    /// Starts it beside the program; nothing waits for it. Raises Failure (File) when it cannot be
    /// started.
    virtual void start() = 0;
};

} // namespace bitlux
