#include "program/waveform_recording.h"

#include "waveform/rebuilt_words.h"

#include <utility>

#include <fmt/format.h>

namespace bitlux {

namespace {
constexpr std::size_t lastWords = 8; ///< that a recording begins with
}

void WireTap::join(WireListener& listener) {
    listeners_.push_back(&listener);
    follow();
}

void WireTap::joinFrames(WireListener& listener) {
    frameListeners_.push_back(&listener);
    follow();
}

void WireTap::leave(WireListener& listener) {
    std::erase(listeners_, &listener);
    std::erase(frameListeners_, &listener);
    follow();
}

/// Listens on the buses that have listeners.
void WireTap::follow() {
    if (isOnPort_ != !listeners_.empty()) {
        isOnPort_ = !isOnPort_;
        if (isOnPort_)
            pins_.startRecording(*this, clock_);
        else
            pins_.stopRecording();
    }
    if (listeners_.empty() && frameListeners_.empty())
        dongle_.stopRecording();
    else
        dongle_.startRecording(*this, clock_);
}

void WireTap::add(const WireAccess& access) {
    for (WireListener* listener : listeners_)
        listener->add(access);
    if (access.kind == WireAccess::Kind::FrameOut || access.kind == WireAccess::Kind::FrameIn)
        for (WireListener* listener : frameListeners_)
            listener->add(access);
}

void WaveformRecording::start(std::size_t limit) {
    if (running_)
        return;
    std::vector<WordRecord> before;
    if (const SentWords* sent = parts_.engine.sentWords())
        before =
            rebuiltRecords(sent->last(lastWords),
                           std::make_shared<const ExtraPinNames>(extraPinNames(parts_.session)));
    recorder_ = std::make_unique<WordRecorder>(parts_.session, parts_.engine, parts_.dongle, limit,
                                               std::move(before));
    parts_.tap.join(*recorder_);
    running_ = true;
}

void WaveformRecording::stop() {
    if (!running_)
        return;
    recorder_->stop();
    parts_.tap.leave(*recorder_);
    running_ = false;
}

const std::deque<WordRecord>& WaveformRecording::words() const {
    static const std::deque<WordRecord> none;
    return recorder_ ? recorder_->words() : none;
}

void WaveformRecording::saveVcdAs() {
    saveAs({.kind = FileDialog::Kind::Save,
            .title = "Save Waveform as VCD",
            .filter = "Value Change Dumps (*.vcd)|*.vcd|All Files (*.*)|*.*",
            .fileName = "waveform.vcd"},
           [this](const std::string& fileName) {
               saveVcd(fileName);
               return std::string();
           });
}

void WaveformRecording::saveSrAs() {
    saveAs({.kind = FileDialog::Kind::Save,
            .title = "Save Waveform as sigrok Session",
            .filter = "sigrok Sessions (*.sr)|*.sr|All Files (*.*)|*.*",
            .fileName = "waveform.sr"},
           [this](const std::string& fileName) {
               const std::size_t saved = saveSr(fileName).words;
               return saved == words().size()
                          ? std::string()
                          : fmt::format("The file has room for the last {} of {} words.", saved,
                                        words().size());
           });
}

void WaveformRecording::saveAs(const FileDialog& dialog, const Save& save) {
    const std::optional<std::string> name = parts_.desk.fileDialogs.ask(dialog);
    if (!name)
        return;
    std::string remark;
    parts_.forms.perform(dialog.title, [&] {
        const Hourglass hourglass(parts_.desk.pointer);
        remark = save(*name);
    });
    if (!remark.empty())
        parts_.desk.boxes.show({.text = remark, .icon = MessageBox::Icon::Information});
}

} // namespace bitlux
