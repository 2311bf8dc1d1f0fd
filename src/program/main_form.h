#pragma once

#include "config/applied_shape.h"
#include "config/configuration_files.h"
#include "panels/zt72517/pspi_page.h"
#include "platform/clock.h"
#include "platform/desk.h"
#include "platform/forms/controls.h"
#include "platform/forms/form.h"
#include "program/main_tabs.h"
#include "program/status_notices.h"
#include "program/unsaved_work.h"
#include "sending/batches.h"
#include "sending/command_editor.h"
#include "sending/command_lists.h"
#include "sending/continuous_count.h"
#include "sending/emptied_commands.h"
#include "sending/extra_pin_rows.h"
#include "sending/multiple_run.h"
#include "sending/quick_commands.h"
#include "sending/run_controls.h"
#include "sending/session_log.h"
#include "sending/single_word_page.h"
#include "session/live_options.h"
#include "session/session.h"
#include "transfer/pin_layer.h"
#include "transfer/word_engine.h"

#include <cstddef>
#include <map>
#include <optional>
#include <string>

namespace bitlux {

/// frmMain, the main window: one form to the user, made of the parts that lower modules contribute,
/// and of what belongs to no page.
class MainForm : public forms::Form {
public:
    /// The dependencies of the form; all outlive it.
    struct Parts {
        Session& session;
        const LiveOptions& options;
        PinLayer& pins;
        WordEngine& engine;
        DongleLink& dongle;
        const Desk& desk;
        const Clock& clock;
        const chips::ChipLibrary& library;
    };

    MainForm(forms::FormSet& set, const Parts& parts);

private:
    void registerProcedures(const Parts& parts);
    void addNotices(const Parts& parts);
    [[nodiscard]] static std::optional<Notice> goneNotice(const Parts& parts);
    [[nodiscard]] std::optional<Notice> missingWordNotice(const Session& session);
    [[nodiscard]] std::optional<Notice> shapeNotice(const Session& session) const;
    [[nodiscard]] std::optional<Notice> emptiedNotice() const;
    [[nodiscard]] std::optional<Notice> logFileNotice() const;

    void noteRunProgress();
    [[nodiscard]] std::optional<Notice> missingPinNotice(const Session& session);

    std::optional<std::string> missingWord_;         ///< the name at which the last run ended
    std::map<std::size_t, std::string> missingPins_; ///< of the last run, by line from 0

public:
    forms::Label labelMainTitle;
    forms::Label lblConfigNag;
    forms::MenuItem itemOpenChip; ///< asks for the file of a chip
    forms::MenuItem itemRecordJournal;
    forms::MenuItem itemPortOptions;
    forms::MenuItem itemUpdateDongle;
    forms::MenuItem itemExit;
    forms::MenuItem itemHelpTopics; ///< the window shows the help
    forms::MenuItem itemAbout;
    // No window shows these controls; scripts can reach them.
    forms::Button Command1; ///< sets up the pipes of a dongle that was found
    forms::TextBox Text1;
    forms::TextBox Text2;

    RunControls run;
    CommandLists commands;
    ContinuousCount continuousCount;
    SessionLog log;
    SingleWordPage singleWord;
    EmptiedCommands emptied;
    QuickCommands quickCommands;
    CommandEditor editor;
    Batches batches;
    ExtraPinRows extraPins;
    MultipleRun multiple;
    AppliedShape shape;
    MainTabs tabs;
    zt72517::PspiPage pspi; ///< on page 3
    ConfigurationFiles files;
    StatusNotices notices;
    UnsavedWork unsaved;
};

} // namespace bitlux
