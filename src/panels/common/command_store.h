#pragma once

#include "panels/common/panel_part.h"

#include <functional>
#include <string>

namespace bitlux {

/// Records what the user sends, in a file that can be loaded and run as a sequence.
class CommandStore : public PanelPart {
public:
    explicit CommandStore(const PanelContext& context);

    /// Asks for a file, creates it, and records from now on; nothing is recorded after Cancel.
    /// Raises Failure when the file cannot be created.
    void start();
    void stop() { StoreCommands = false; }
    /// Adds a line while commands are stored.
    void note(const std::string& command, const std::string& value = {}) const {
        if (StoreCommands)
            write(command, value);
    }

    /// Adds a line to the file. When that fails, a message is shown and the recording ends, so that
    /// the command itself is still sent.
    void save_log(const std::string& command, const std::string& value);

    /// How a line is added: save_log.
    std::function<void(const std::string& command, const std::string& value)> write =
        [this](const std::string& command, const std::string& value) { save_log(command, value); };
    /// Called when the file could not be written. Set by the view that shows whether commands are
    /// stored.
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
