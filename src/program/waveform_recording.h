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

/// Tells several listeners what happens on either bus; nothing stands before the port while there
/// is none.
class WireTap : private WireListener {
public:
    /// All outlive the tap.
    WireTap(PinLayer& pins, DongleLink& dongle, const Clock& clock)
        : pins_(pins), dongle_(dongle), clock_(clock) {}

    /// The listener outlives its stay.
    void join(WireListener& listener);
    void leave(WireListener& listener);

private:
    void add(const WireAccess& access) override;

    PinLayer& pins_;
    DongleLink& dongle_;
    const Clock& clock_;
    std::vector<WireListener*> listeners_;
};

/// The words on the wire as the user asks for them: recorded from start to stop, looked at, saved.
/// Off it costs nothing.
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

    /// From now on a recording begins with the last few words that were sent before it.
    void keepLast() { parts_.engine.keepWords(parts_.clock); }
    /// Forgets the words of a recording before; harmless while one is on.
    void start(std::size_t limit = WordRecorder::usualLimit);
    /// The words stay.
    void stop();
    [[nodiscard]] bool running() const { return running_; }

    /// From the oldest that is kept to the last.
    [[nodiscard]] const std::deque<WordRecord>& words() const;
    /// How many words there were since the start; those that are kept are the last of them.
    [[nodiscard]] std::uint64_t count() const { return recorder_ ? recorder_->count() : 0; }
    /// The word of a number, counted from 1; nullptr when it is not kept.
    [[nodiscard]] const WordRecord* word(std::uint64_t number) const {
        return recorder_ ? recorder_->word(number) : nullptr;
    }

    // See waveform_files.h.
    void saveVcd(const std::string& fileName) const { exportVcd(words(), fileName); }
    SampledWords saveSr(const std::string& fileName) const { return exportSr(words(), fileName); }

    // Ask for the file name and save; a failure is shown in a box, and so is what found no room.
    void saveVcdAs();
    void saveSrAs();

private:
    /// Saves under a name and returns what there is to say about it.
    using Save = std::function<std::string(const std::string& fileName)>;

    void saveAs(const FileDialog& dialog, const Save& save);

    Parts parts_;
    std::unique_ptr<WordRecorder> recorder_;
    bool running_ = false;
};

} // namespace bitlux
