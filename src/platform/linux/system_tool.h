#pragma once

#include "platform/system_information.h"

#include <string>
#include <vector>

namespace bitlux {

/// The first of the known system information tools that stands in the search path.
class LinuxSystemTool : public SystemInformation {
public:
    [[nodiscard]] bool available() const override { return !command().empty(); }
    void start() override;

    /// The command with its arguments; empty when there is no tool.
    [[nodiscard]] static std::vector<std::string> command();
};

/// Starts a program that goes its own way: it is no child of ours and inherits no open file but the
/// standard ones. Raises Failure (File) when the system has no room for another process.
void startDetached(std::vector<std::string> command);

} // namespace bitlux
