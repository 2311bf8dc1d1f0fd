#pragma once

#include "journal/journal_recorder.h"
#include "program/main_form.h"
#include "program/waveform_recording.h"

#include <functional>
#include <memory>
#include <optional>
#include <string>

namespace bitlux {

/// Records a journal from start to stop. Costs nothing while off.
class JournalRecording {
public:
    /// All outlive it.
    struct Parts {
        const Session& session;
        WordEngine& engine;
        DongleLink& dongle;
        PinLayer& pins;
        ObservedBoxes& boxes;
        WireTap& tap;
        const Clock& clock;
        FileDialogs& fileDialogs;
        std::function<MainForm&()> mainForm;
    };

    explicit JournalRecording(Parts parts) : parts_(std::move(parts)) {}
    ~JournalRecording() { stop(); }
    JournalRecording(const JournalRecording&) = delete;
    JournalRecording& operator=(const JournalRecording&) = delete;

    /// From now on everything goes into this file, and into no other; its old content is lost.
    /// Raises Failure (File) when it cannot be written.
    void start(const std::string& fileName) { start(std::make_unique<GrowingFile>(fileName)); }
    void start(std::unique_ptr<GrowingFile> file);
    /// Harmless while off. What ended a recording early is forgotten.
    void stop();
    [[nodiscard]] bool isOn() const { return recorder_ && recorder_->failure().empty(); }
    /// Why the last one ended before its time, as a sentence; empty when it did not.
    [[nodiscard]] std::string failure() const { return recorder_ ? recorder_->failure() : ""; }

    /// Asks for a file and records; ends the recording when one is on.
    void itemRecordJournal_Click();
    /// For the status line: that a journal is recorded, or has ended early.
    [[nodiscard]] std::optional<Notice> notice() const;

    /// It ended before its time; sending continues.
    Event<> failed;

private:
    Parts parts_;
    std::unique_ptr<JournalRecorder> recorder_;
};

} // namespace bitlux
