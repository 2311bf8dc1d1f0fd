#pragma once

#include "panels/common/panel_part.h"

#include <functional>
#include <string>

namespace bitlux {

/// Records what the user sends by hand, in a file that can be loaded and run as a sequence.
class CommandStore : public PanelPart {
public:
    explicit CommandStore(const PanelContext& context);

    /// Asks for a file, makes it, and records from now on; nothing is recorded after Cancel. Raises
    /// Failure when the file cannot be made.
    void start();
    void stop() { StoreCommands = false; }
    /// Adds a line while commands are stored.
    void note(const std::string& command, const std::string& value = {}) const {
        if (StoreCommands)
            write(command, value);
    }

    /// Adds a line to the file. When that fails the user is told and the recording ends, so that
    /// the command itself still goes out.
    void save_log(const std::string& command, const std::string& value);

    /// How a line is added: save_log.
    std::function<void(const std::string& command, const std::string& value)> write =
        [this](const std::string& command, const std::string& value) { save_log(command, value); };
    /// A file could not be written on. Set by whoever shows whether commands are stored.
    std::function<void()> stopped = [] {};

    // Variables of the form
    bool StoreCommands = false;
    std::string StoreFileName;
    std::string StoreFileNumber;

private:
    const Desk desk_;
    SequenceLists& lists_;
};

} // namespace bitlux
