#pragma once

#include "config/configuration_files.h"
#include "config/recovered_files.h"
#include "platform/forms/form.h"
#include "platform/forms/timer.h"
#include "program/status_notices.h"
#include "sending/command_lists.h"
#include "sending/run_controls.h"
#include "session/session.h"

#include <cstddef>
#include <functional>
#include <optional>
#include <string>
#include <vector>

namespace bitlux {

/// Whether something differs from the file in use, and keeps this work until it is saved: every two
/// minutes, and before it is replaced or discarded. The front end enables both; otherwise nothing
/// is compared or kept.
class UnsavedWork {
public:
    static constexpr int interval = 120'000; ///< milliseconds between two checks

    /// The dependencies; all outlive it.
    struct Parts {
        const Session& session;
        const RunControls& run;
        const CommandLists& commands;
        ConfigurationFiles& files;
    };

    UnsavedWork(forms::Form& form, const Parts& parts);

    /// The current state counts as saved.
    void compareFromNow();
    /// Whether Save would write something different from what was read or written last. During a
    /// run, the result from before the run. Compares the whole content of a file.
    [[nodiscard]] bool differs();
    /// The work is too large for a check after every key.
    [[nodiscard]] bool isLarge() const;

    /// Keeps unsaved work in this folder from now on. When this fails, a notice says so.
    void keepIn(const std::string& folder);
    /// The program ends. The next program offers work about which the user was not asked.
    void end(bool wasAsked);

    /// What can be opened again, the newest first.
    [[nodiscard]] std::vector<RecoveredFile> recovered() const;
    void open(const RecoveredFile& file);
    [[nodiscard]] std::optional<Notice> notice() const;

private:
    using Hash = std::size_t;

    [[nodiscard]] std::optional<Hash> present() const;
    /// The file that the current work is based on; empty for none.
    [[nodiscard]] std::string origin() const;
    void keep();
    void giveUp();
    void fileUsed();
    void openLeft();
    void tryOut(const std::function<void()>& action);

    Parts parts_;
    std::optional<RecoveredFiles> store_;
    std::optional<RecoveredFile> left_; ///< by a program that was killed
    bool compares_ = false;
    bool differed_ = false;
    std::optional<Hash> saved_; ///< nothing when no file has the current state
    std::optional<Hash> kept_;  ///< in the folder
    std::string fileInUse_;     ///< that was read or written last
    std::string problem_;       ///< why it is not kept

public:
    forms::Timer timer_keep;
};

} // namespace bitlux
