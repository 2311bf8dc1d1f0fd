#pragma once

#include "platform/clock.h"
#include "platform/desk.h"
#include "platform/forms/form_set.h"
#include "transfer/dongle_link.h"
#include "transfer/pin_layer.h"
#include "waveform/waveform_files.h"
#include "waveform/word_recorder.h"

#include <functional>
#include <memory>
#include <string>
#include <vector>

namespace bitlux {

/// Reports the events of either bus to several listeners; nothing is in front of the port while
/// there is none.
class WireTap : private WireListener {
public:
    /// All outlive the tap.
    WireTap(PinLayer& pins, DongleLink& dongle, const Clock& clock)
        : pins_(pins), dongle_(dongle), clock_(clock) {}

    /// The listener must be removed before it is destroyed.
    void join(WireListener& listener);
    /// The same for the frames of the dongle alone; nothing is in front of the port for it.
    void joinFrames(WireListener& listener);
    void leave(WireListener& listener);

private:
    void add(const WireAccess& access) override;
    void follow();

    PinLayer& pins_;
    DongleLink& dongle_;
    const Clock& clock_;
    std::vector<WireListener*> listeners_;
    std::vector<WireListener*> frameListeners_;
    bool isOnPort_ = false;
};

/// Records the words on the wire from start to stop, for display and saving. Costs nothing while
/// off.
class WaveformRecording {
public:
    /// All outlive it.
    struct Parts {
        const Session& session;
        WordEngine& engine;
        DongleLink& dongle;
        WireTap& tap;
        const Clock& clock;
        forms::FormSet& forms;
        const Desk& desk;
    };

    explicit WaveformRecording(const Parts& parts) : parts_(parts) {}
    ~WaveformRecording() { stop(); }
    WaveformRecording(const WaveformRecording&) = delete;
    WaveformRecording& operator=(const WaveformRecording&) = delete;

    /// From now on a recording begins with the last few words sent before it.
    void keepLast() { parts_.engine.keepWords(parts_.clock); }
    /// Discards the words of an earlier recording; harmless during a recording.
    void start(std::size_t limit = WordRecorder::usualLimit);
    /// The words stay.
    void stop();
    [[nodiscard]] bool running() const { return running_; }

    /// From the oldest kept to the last.
    [[nodiscard]] const std::deque<WordRecord>& words() const;
    /// Number of words since the start; the last of them are kept.
    [[nodiscard]] std::uint64_t count() const { return recorder_ ? recorder_->count() : 0; }
    /// The word of a number, counted from 1; nullptr when it is not kept.
    [[nodiscard]] const WordRecord* word(std::uint64_t number) const {
        return recorder_ ? recorder_->word(number) : nullptr;
    }

    // See waveform_files.h.
    void saveVcd(const std::string& fileName) const { exportVcd(words(), fileName); }
    SampledWords saveSr(const std::string& fileName) const { return exportSr(words(), fileName); }

    // Ask for the file name and save; a box shows a failure, and what did not fit.
    void saveVcdAs();
    void saveSrAs();

private:
    /// Saves under a name and returns a message for the user.
    using Save = std::function<std::string(const std::string& fileName)>;

    void saveAs(const FileDialog& dialog, const Save& save);

    Parts parts_;
    std::unique_ptr<WordRecorder> recorder_;
    bool running_ = false;
};

} // namespace bitlux
