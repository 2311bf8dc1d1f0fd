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

/// Whether something differs from the file in use, and where that is kept until it is saved: every
/// two minutes, and before it is replaced or dropped. A front end turns on what it wants; without
/// one nothing is compared or kept.
class UnsavedWork {
public:
    static constexpr int interval = 120'000; ///< milliseconds between two looks

    /// What it works with; all outlive it.
    struct Parts {
        const Session& session;
        const RunControls& run;
        const CommandLists& commands;
        ConfigurationFiles& files;
    };

    UnsavedWork(forms::Form& form, const Parts& parts);

    /// What there is now counts as saved.
    void compareFromNow();
    /// Whether Save would write something else than was read or written last. During a run this is
    /// as it was when the run began. All that a file holds is looked through.
    [[nodiscard]] bool differs();
    /// There is too much of it for a look after every key.
    [[nodiscard]] bool isLarge() const;

    /// Keeps unsaved work in this folder from now on. Where it cannot be, a notice says so.
    void keepIn(const std::string& folder);
    /// The program ends. What nobody was asked about the next program offers by itself.
    void end(bool wasAsked);

    /// What can be opened again, the newest first.
    [[nodiscard]] std::vector<RecoveredFile> recovered() const;
    void open(const RecoveredFile& file);
    [[nodiscard]] std::optional<Notice> notice() const;

private:
    using Hash = std::size_t;

    [[nodiscard]] std::optional<Hash> present() const;
    /// The file that the present work is a change of; empty for none.
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
    std::optional<Hash> saved_; ///< nothing where no file holds what there is
    std::optional<Hash> kept_;  ///< in the folder
    std::string fileInUse_;     ///< that was read or written last
    std::string problem_;       ///< why it is not kept

public:
    forms::Timer timer_keep;
};

} // namespace bitlux
