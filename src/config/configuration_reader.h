#pragma once

#include "config/configuration_settings.h"
#include "config/configure_dialog.h"
#include "platform/line_reader.h"
#include "sending/batches.h"
#include "sending/command_lists.h"
#include "sending/emptied_commands.h"
#include "sending/session_log.h"
#include "session/session.h"

#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

namespace bitlux {

/// Executes a configuration file: each record changes the dialog's controls or the lists
/// immediately, and [ApplyNow] applies the current controls.
class ConfigurationReader {
public:
    /// The dependencies; all outlive it.
    struct Parts {
        Session& session;
        ConfigureDialog& dialog;
        CommandLists& commands;
        EmptiedCommands& emptied;
        Batches& batches;
        SessionLog& log;
        const PartTabAccess& tabs;
    };

    /// Opens the file; raises Failure (File) when it cannot be read.
    ConfigurationReader(const Parts& parts, const std::string& fileName);

    /// Reads the first record; false when the file is empty or the record is not that of a
    /// configuration. To be called once, before `read`.
    bool isConfiguration();
    /// Empties the lists and executes the other records; unknown keys are skipped. A record that is
    /// damaged or cannot be executed raises Failure with file, line and reason; those before it
    /// have taken effect. A port that cannot be used raises its Failure (PortUnusable) unchanged.
    void read();
    /// The chips of users that the file enables and that have no file.
    [[nodiscard]] const std::vector<std::string>& missingChips() const { return missingChips_; }
    /// For recovered work, the file that was changed; empty for none.
    [[nodiscard]] const std::optional<std::string>& recoveredFrom() const { return recoveredFrom_; }
    /// Whether a record of the file was an extra pin of the dongle.
    [[nodiscard]] bool hasDonglePins() const { return hasDonglePins_; }

private:
    using Action = std::function<void(const RecordValue& value)>;

    void addDonglePins();
    void reset();
    void play(std::string_view line);
    void applyNow();
    void quickCommand(std::string_view value);
    /// Fills bits_ from the value of a Quick Command; the rest is the name.
    std::string_view takeBits(std::string_view value);
    void commandToSend(const std::string& line);
    void batchItem(const RecordValue& value);

    Parts parts_;
    Session& session_;
    LineReader file_;
    std::unordered_map<std::string, Action> actions_; ///< by key
    std::vector<std::string> missingChips_;
    std::optional<std::string> recoveredFrom_;
    bool isVersion2_ = false;
    bool applied_ = false; ///< [ApplyNow] was executed
    bool hasDonglePins_ = false;
    bool nextCommandIsFirst_ = false; ///< from [ApplyNow] to the first Quick Command
    std::vector<std::int16_t> bits_;  ///< of the Quick Command that is read
};

} // namespace bitlux
