#pragma once

#include "journal/journal_settings.h"
#include "journal/observed_boxes.h"
#include "platform/clock.h"
#include "platform/growing_file.h"
#include "sending/multiple_run.h"
#include "transfer/dongle_link.h"
#include "transfer/pin_layer.h"
#include "transfer/word_engine.h"

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace bitlux {

/// Writes a journal: every word with its answer, and what happens in between, each as a line as
/// soon as it has happened. See docs/formats.md.
class JournalRecorder : public WireListener {
public:
    /// What is recorded; all outlive the recorder.
    struct Parts {
        const Session& session;
        WordEngine& engine;
        DongleLink& dongle;
        PinLayer& pins;
        MultipleRun& multiple;
        ObservedBoxes& boxes;
        const Clock& clock;
    };

    /// Records from now on. `program` is its version. Raises Failure (File) when the first line
    /// cannot be written.
    JournalRecorder(const Parts& parts, std::unique_ptr<GrowingFile> file,
                    std::string_view program);
    ~JournalRecorder() override;
    JournalRecorder(const JournalRecorder&) = delete;
    JournalRecorder& operator=(const JournalRecorder&) = delete;

    /// A frame of the dongle; the owner passes all of them.
    void add(const WireAccess& access) override;

    /// Empty until a line could not be written, which ends the recording; then why, as a sentence.
    [[nodiscard]] const std::string& failure() const { return failure_; }
    [[nodiscard]] const std::string& fileName() const { return fileName_; }
    /// It ended before its time.
    Event<> failed;

private:
    void subscribe();
    [[nodiscard]] std::int64_t microseconds() const;

    void wordStarts();
    void wordAnswered();
    void wordFails();
    void writeWord(bool answered);
    [[nodiscard]] std::string sentDigits() const;
    void takeSettings();
    void settleCommand();
    void writeCommand(const UsbFrame* answer);
    void pinsWritten(PinRegister which);
    void boxShows(const MessageBox& box);
    void runProgresses();
    void writeHeader(std::string_view program);
    /// An object of this kind, begun now.
    [[nodiscard]] nlohmann::ordered_json object(const char* kind) const;
    void write(const nlohmann::ordered_json& object);
    void writeLine(std::string_view line);

    Parts parts_;
    const Session& session_;
    std::unique_ptr<GrowingFile> file_; ///< until it can take no more
    std::string fileName_;
    std::string failure_;
    std::string line_; ///< its memory is used again
    std::int64_t start_;
    JournalSettings settings_; ///< as written last
    std::vector<Subscription> subscriptions_;

    /// The word on its way.
    struct Word {
        std::int64_t begin = 0;
        bool updatesPins = false;
        bool topBit = false;
        bool entersUpdate = false; ///< of the dongle's firmware
        bool isOut = false;        ///< its frame has been seen
        bool isDoubtful = false;   ///< there may be no frame of it
    };
    std::optional<Word> word_;
    std::optional<UsbFrame> command_; ///< without its answer
    std::int64_t commandBegin_ = 0;
    std::int64_t waitUntil_ = 0; ///< of the last wait
};

} // namespace bitlux
