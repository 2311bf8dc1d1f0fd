#include "program/waveform_recording.h"

namespace bitlux {

void WireTap::join(WireListener& listener) {
    listeners_.push_back(&listener);
    if (listeners_.size() > 1)
        return;
    pins_.startRecording(*this, clock_);
    dongle_.startRecording(*this, clock_);
}

void WireTap::leave(WireListener& listener) {
    if (std::erase(listeners_, &listener) == 0 || !listeners_.empty())
        return;
    pins_.stopRecording();
    dongle_.stopRecording();
}

void WireTap::add(const WireAccess& access) {
    for (WireListener* listener : listeners_)
        listener->add(access);
}

void WaveformRecording::start(std::size_t limit) {
    if (running_)
        return;
    recorder_ = std::make_unique<WordRecorder>(parts_.session, parts_.engine, parts_.dongle, limit);
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
           [this](const std::string& fileName) { saveVcd(fileName); });
}

void WaveformRecording::saveSrAs() {
    saveAs({.kind = FileDialog::Kind::Save,
            .title = "Save Waveform as sigrok Session",
            .filter = "sigrok Sessions (*.sr)|*.sr|All Files (*.*)|*.*",
            .fileName = "waveform.sr"},
           [this](const std::string& fileName) { saveSr(fileName); });
}

void WaveformRecording::saveAs(const FileDialog& dialog,
                               const std::function<void(const std::string&)>& save) {
    if (const std::optional<std::string> name = parts_.fileDialogs.ask(dialog))
        parts_.forms.perform(dialog.title, [&] { save(*name); });
}

} // namespace bitlux
