#pragma once

#include "config/configuration_settings.h"
#include "config/configure_dialog.h"
#include "platform/desk.h"
#include "platform/event.h"
#include "platform/forms/controls.h"
#include "platform/forms/form.h"
#include "sending/batches.h"
#include "sending/command_lists.h"
#include "sending/emptied_commands.h"
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
    /// The dependencies; all outlive it.
    struct Parts {
        Session& session;
        CommandLists& commands;
        EmptiedCommands& emptied;
        Batches& batches;
        SessionLog& log;
        RunControls& run;
        Desk desk;
    };

    ConfigurationFiles(forms::Form& form, const Parts& parts);

    // Set by the owner of the dialog and the tabs.
    std::function<ConfigureDialog&()> dialog;
    PartTabAccess tabs;

    /// Asks for a file, or uses the one of the command line, and reads it. A file that is not a
    /// configuration only changes the file name. A damaged record ends the reading with Failure,
    /// which names file, line and reason; the records before it have taken effect. After a Failure
    /// no file is in use, so Save asks for a name; likewise for recovered work, where Save proposes
    /// the file that was changed.
    void itemOpen_Click();
    /// Writes to the file in use, or asks for one. A file that has more Quick Commands than the
    /// program is kept with "~" after its name, and a box says so. Raises Failure when the file
    /// cannot be written or a text contains what a file cannot hold; the old file, its name and
    /// ConfigDirty stay as they were then.
    void itemSave_Click();
    void itemSaveAs_Click();
    /// Reads this file, without asking for one.
    void open(const std::string& fileName);
    /// What Save would write; raises Failure as it does.
    [[nodiscard]] std::string text();
    /// The file that recovered work is based on, until it is saved or another file is opened; empty
    /// for work that had no file.
    [[nodiscard]] const std::optional<std::string>& recoveredFrom() const { return recoveredFrom_; }

    /// A file is about to replace the whole work.
    Event<> replacing;
    /// A file was opened or saved as a whole; its name is ConfigFileName, which is empty for
    /// recovered work.
    Event<> fileUsed;

private:
    void read(const std::string& fileName);
    /// The chips that have no file; nothing for a file that is no configuration.
    std::optional<std::vector<std::string>> play(const std::string& fileName);
    void saveAs(const std::optional<std::string>& fileName);
    /// Returns what the user has to know about it.
    std::string write(const std::string& fileName);
    std::optional<std::string> ask(FileDialog::Kind kind);
    void say(const std::string& text);
    void tellMissing(const std::vector<std::string>& chips);

    Parts parts_;
    Session& session_;
    std::optional<std::string> recoveredFrom_;
    bool fileHasDonglePins_ = false; ///< the one that was opened or saved last

public:
    forms::MenuItem itemOpen;
    forms::MenuItem itemSave;
    forms::MenuItem itemSaveAs;
};

} // namespace bitlux
