#pragma once

#include "config/configuration_settings.h"
#include "config/configure_dialog.h"
#include "platform/desk.h"
#include "platform/event.h"
#include "platform/forms/controls.h"
#include "platform/forms/form.h"
#include "sending/batches.h"
#include "sending/command_lists.h"
#include "sending/run_controls.h"
#include "sending/session_log.h"
#include "session/session.h"

#include <functional>
#include <optional>
#include <string>
#include <vector>

namespace bitlux {

/// Opening and saving of configuration files (*.spi) from the File menu of the main form.
class ConfigurationFiles {
public:
    /// What it works with; all outlive it.
    struct Parts {
        Session& session;
        CommandLists& commands;
        Batches& batches;
        SessionLog& log;
        RunControls& run;
        Desk desk;
    };

    ConfigurationFiles(forms::Form& form, const Parts& parts);

    // Set by whoever owns the dialog and the tabs.
    std::function<ConfigureDialog&()> dialog;
    PartTabAccess tabs;

    /// Asks for a file, or takes the one of the command line, and reads it. A file that is no
    /// configuration changes nothing but its name. A damaged record ends the reading with Failure,
    /// which names file, line and reason; what stood before it has acted.
    void itemOpen_Click();
    /// Writes to the file in use, or asks for one. Raises Failure (File) and leaves ConfigDirty
    /// set when the file cannot be written or a text holds what a file cannot; the old file stays
    /// as it was then.
    void itemSave_Click();
    void itemSaveAs_Click();
    /// Reads this file, without asking for one.
    void open(const std::string& fileName);

    /// A file was opened or saved as a whole; its name is ConfigFileName.
    Event<> fileUsed;

private:
    void read(const std::string& fileName);
    void write();
    std::optional<std::string> ask(FileDialog::Kind kind);
    void say(const std::string& text);
    void tellMissing(const std::vector<std::string>& chips);

    Parts parts_;
    Session& session_;

public:
    forms::MenuItem itemOpen;
    forms::MenuItem itemSave;
    forms::MenuItem itemSaveAs;
};

} // namespace bitlux
