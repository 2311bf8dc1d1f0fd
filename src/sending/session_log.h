#pragma once

#include "platform/desk.h"
#include "platform/event.h"
#include "platform/forms/control_array.h"
#include "platform/forms/controls.h"
#include "platform/forms/form.h"
#include "sending/log_file.h"
#include "sending/log_lines.h"
#include "session/live_options.h"
#include "session/session.h"

#include <functional>
#include <memory>
#include <string>

namespace bitlux {

/// Position of a word in a pass of a continuous run; a single word is both first and last.
struct PlaceInPass {
    bool first = true;
    bool last = true;
};

/// The Session Log of the main form: two lists, one on each generic page, that always show the
/// same lines, and the buttons and menu items that save and clear them.
class SessionLog {
public:
    SessionLog(forms::Form& form, Session& session, const LiveOptions& options, const Desk& desk);

    // Saving and clearing first stop a continuous run. Set by the owner of the run.
    std::function<void()> stopContinuous;

    /// Adds one word from WordToSend and WordReceived to both lists.
    void UpdateLog();
    /// Adds a word that a driver has sent, by the rules of single and continuous sending;
    /// `continuous`: whether a continuous run is active. Adds nothing while the log is off, or for
    /// a word whose transfer failed.
    void logWord(bool continuous, PlaceInPass place = {});
    /// Adds a text that is not a word, by the same rules.
    void logLine(const std::string& text, bool continuous);
    /// The same, followed by an empty line.
    void logNote(const std::string& text, bool continuous);
    /// True when the log is on and has no room for a further word; never while a file is open.
    [[nodiscard]] bool full() const;
    void clear();

    Event<> cleared;

    void cmdClearLogSingle_Click();
    /// Writes to the file in use, or asks for one, which becomes the file in use once it was
    /// written. Raises Failure (File) when it cannot be written.
    void cmdSaveLogSingle_Click();
    void itemSaveLogAs_Click();

    /// Enables or disables the lists, their buttons and their frames.
    void setEnabled(bool enabled);

    [[nodiscard]] const LogLines& lines() const { return *lines_; }

private:
    [[nodiscard]] bool takesContinuous() const;
    [[nodiscard]] bool takesText(bool continuous) const;
    void addNote(const std::string& text);
    /// While a log file is open, the list keeps the last lines and does not become full.
    void makeRoom();
    void linesChanged();
    void moveToLastLine();
    std::optional<std::string> askFileName();
    void saveAs(const std::optional<std::string>& fileName);
    void write(const std::string& fileName);

    Session& session_;
    const LiveOptions& options_;
    Desk desk_;
    std::shared_ptr<LogLines> lines_ = std::make_shared<LogLines>();

public:
    // 1 holds the log, 2 the extra pins.
    forms::ControlArray<forms::Frame> frameLogPinsNow; ///< on the single-word page
    forms::ControlArray<forms::Frame> frameLogPins;    ///< on the Batch page
    forms::ListBox lstSessionLogSingle;
    forms::ListBox lstSessionLogMult;
    forms::Button cmdSaveLogSingle;
    forms::Button cmdClearLogSingle;
    forms::Button cmdSaveLogMult;
    forms::Button cmdClearLogMult;
    forms::MenuItem itemSaveLog;
    forms::MenuItem itemSaveLogAs;
    forms::MenuItem itemClearLog;
    LogFile file;
};

} // namespace bitlux
