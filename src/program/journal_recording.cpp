#include "program/journal_recording.h"

#include "platform/printable.h"
#include "program/version.h"

#include <utility>

namespace bitlux {

void JournalRecording::start(std::unique_ptr<GrowingFile> file) {
    stop();
    recorder_ = std::make_unique<JournalRecorder>(
        JournalRecorder::Parts{.session = parts_.session,
                               .engine = parts_.engine,
                               .dongle = parts_.dongle,
                               .pins = parts_.pins,
                               .multiple = parts_.mainForm().multiple,
                               .boxes = parts_.boxes,
                               .clock = parts_.clock},
        std::move(file), programVersion);
    recorder_->failed.subscribe([this] { failed.raise(); });
    parts_.tap.joinFrames(*recorder_);
}

void JournalRecording::stop() {
    if (recorder_)
        parts_.tap.leave(*recorder_);
    recorder_.reset();
}

void JournalRecording::itemRecordJournal_Click() {
    if (isOn()) {
        stop();
        return;
    }
    stop();
    const std::optional<std::string> name =
        parts_.fileDialogs.ask({.kind = FileDialog::Kind::Save,
                                .title = "Record Journal",
                                .filter = "Journals (*.jsonl)|*.jsonl|All Files (*.*)|*.*",
                                .fileName = {}});
    if (name && !name->empty())
        start(*name);
}

std::optional<Notice> JournalRecording::notice() const {
    constexpr std::size_t longestText = 120;
    if (!recorder_)
        return {};
    if (!isOn())
        return Notice{.text = "The journal ended early: " + printable(failure(), longestText),
                      .button = "Record Journal...",
                      .procedure = "itemRecordJournal_Click"};
    return Notice{.text = "Recording a journal to " + printable(recorder_->fileName(), longestText),
                  .button = "Stop Recording",
                  .procedure = "itemRecordJournal_Click"};
}

} // namespace bitlux
