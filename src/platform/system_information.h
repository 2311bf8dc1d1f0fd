#pragma once

namespace bitlux {

/// The platform's tool that shows information about the machine.
class SystemInformation {
public:
    virtual ~SystemInformation() = default;
    [[nodiscard]] virtual bool available() const = 0;
    /// Starts it as an independent process. Raises Failure (File) when it cannot be started.
    virtual void start() = 0;
};

} // namespace bitlux
