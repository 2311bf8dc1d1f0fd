#pragma once

#include "panels/zt72518/panel_variables.h"
#include "platform/desk.h"
#include "platform/forms/form.h"

#include <functional>
#include <string>

namespace bitlux::zt72518 {

/// Records what the user sends by hand, in a file that can be loaded and run as a sequence.
class CommandStore {
public:
    /// All outlive it.
    CommandStore(forms::Form& form, PanelVariables& variables, const Desk& desk);

    /// Asks for a file, makes it, and records from now on; nothing is recorded after Cancel. Raises
    /// Failure when the file cannot be made.
    void start();
    void stop() { variables_.StoreCommands = false; }

    /// Adds a line to the file. When that fails the user is told and the recording ends, so that
    /// the command itself still goes out.
    void save_log(const std::string& command, const std::string& value);

    /// A file could not be written on. Set by whoever shows whether commands are stored.
    std::function<void()> stopped;

private:
    PanelVariables& variables_;
    const Desk desk_;
};

} // namespace bitlux::zt72518
