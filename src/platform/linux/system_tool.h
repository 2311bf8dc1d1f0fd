#pragma once

#include "platform/system_information.h"

#include <string>
#include <vector>

namespace bitlux {

/// The first of the known system information tools that is in the search path.
class LinuxSystemTool : public SystemInformation {
public:
    [[nodiscard]] bool available() const override { return !command().empty(); }
    void start() override;

    /// The command with its arguments; empty when there is no tool.
    [[nodiscard]] static std::vector<std::string> command();
};

/// Starts an independent program: it is not a child of ours and inherits only the standard files.
/// Raises Failure (File) when the system cannot start another process.
void startDetached(std::vector<std::string> command);

} // namespace bitlux
