#include "journal/journal_recorder.h"

#include "journal/journal_entry.h"
#include "journal/json_members.h"
#include "platform/time_units.h"
#include "sending/word_text.h"

#include <algorithm>
#include <chrono>
#include <utility>

#include <fmt/chrono.h>
#include <fmt/ranges.h>

namespace bitlux {

namespace {

constexpr std::size_t bitsOfByte = 8;

bool isBit(std::int16_t element) {
    return element == 0 || element == 1;
}

/// A word that has whole bytes in every eighth element, bit by bit as its frame has it.
std::vector<std::int16_t> spread(WordBits packed, bool msbFirst) {
    std::vector<std::int16_t> bits(packed.begin(), packed.end());
    for (std::size_t i = 0; i < bits.size(); ++i) {
        if (isBit(packed[i]))
            continue;
        // The lowest bit of an element is its own; those above are the next elements' if the
        // highest goes first, and lost otherwise.
        const std::size_t end = std::min(bits.size(), i + (msbFirst ? bitsOfByte : 1));
        for (std::size_t n = i; n < end; ++n)
            bits[n] = static_cast<std::int16_t>(packed[i] >> (n - i) & 1);
        i = end - 1;
    }
    return bits;
}

} // namespace

std::string frameText(const UsbFrame& frame) {
    return fmt::format("{:02X}", fmt::join(frame, " "));
}

JournalRecorder::JournalRecorder(const Parts& parts, std::unique_ptr<GrowingFile> file,
                                 std::string_view program)
    : parts_(parts),
      session_(parts.session),
      file_(std::move(file)),
      fileName_(file_->fileName()),
      start_(parts.clock.nanoseconds()) {
    writeHeader(program);
    if (!failure_.empty())
        throw Failure(Failure::Kind::File, failure_);
    subscribe();
}

JournalRecorder::~JournalRecorder() {
    settleCommand();
    if (word_ && word_->isOut)
        writeWord(false);
}

void JournalRecorder::subscribe() {
    WordEngine& engine = parts_.engine;
    subscriptions_ = {engine.wordStarting.follow([this] { wordStarts(); }),
                      engine.wordTransferred.follow([this] { wordAnswered(); }),
                      engine.sendFailed.follow([this] { wordFails(); }),
                      parts_.dongle.failed.follow([this] { wordFails(); }),
                      parts_.dongle.presenceChanged.follow([this] {
                          Json line = object("dongle");
                          line["present"] = parts_.dongle.isPresent();
                          write(line);
                      }),
                      parts_.pins.written.follow([this](PinRegister which) { pinsWritten(which); }),
                      parts_.boxes.showing.follow([this](const MessageBox& box) { boxShows(box); }),
                      parts_.multiple.progressChanged.follow([this] { runProgresses(); })};
}

std::int64_t JournalRecorder::microseconds() const {
    return (parts_.clock.nanoseconds() - start_) / microsecond;
}

void JournalRecorder::writeHeader(std::string_view program) {
    settings_ = JournalSettings::of(session_, parts_.engine.usesDongle());
    Json line{{"kind", "journal"}, {"version", journalVersion}, {"program", program}};
    line["started"] = fmt::format(
        "{:%Y-%m-%dT%H:%M:%SZ}",
        fmt::gmtime(std::chrono::system_clock::to_time_t(std::chrono::system_clock::now())));
    settings_.addTo(line);
    write(line);
}

void JournalRecorder::wordStarts() {
    settleCommand();
    word_ = {.begin = microseconds(),
             .updatesPins = session_.USBPinUpdate == 1,
             .topBit = session_.USBFrameTopBit,
             .entersUpdate = session_.FirmwareUpdateRequest};
    takeSettings();
}

/// Writes them where the last ones hold no more.
void JournalRecorder::takeSettings() {
    const JournalSettings now = JournalSettings::of(session_, parts_.engine.usesDongle());
    if (settings_.isLike(now))
        return;
    settings_ = now;
    Json line = object("settings");
    settings_.addTo(line);
    write(line);
}

void JournalRecorder::wordAnswered() {
    if (word_)
        writeWord(true);
}

void JournalRecorder::wordFails() {
    settleCommand();
    if (word_)
        writeWord(false);
}

void JournalRecorder::writeWord(bool answered) {
    const Word word = *std::exchange(word_, std::nullopt);
    if (word.entersUpdate) { // which must not come again by itself
        Json line = object("remark");
        line["text"] = "The dongle was told to enter its firmware update mode.";
        write(line);
        return;
    }
    line_.clear();
    fmt::format_to(std::back_inserter(line_), R"({{"kind":"word","us":{},"took":{},"sent":"{}")",
                   word.begin, microseconds() - word.begin, sentDigits());
    if (answered)
        fmt::format_to(std::back_inserter(line_), R"(,"received":"{}")",
                       hexText(session_.WordReceived));
    else
        line_ += R"(,"received":null)";
    if (settings_.onDongle && word.updatesPins)
        line_ += R"(,"updates_pins":true)";
    if (settings_.onDongle && word.topBit)
        line_ += R"(,"top_bit":true)";
    line_ += "}\n";
    writeLine(line_);
}

std::string JournalRecorder::sentDigits() const {
    const WordBits word =
        WordBits(session_.WordToSend).first(static_cast<std::size_t>(session_.SPIWordLength));
    if (std::all_of(word.begin(), word.end(), isBit))
        return hexText(word);
    return hexText(spread(word, session_.MSBFirst == ConstOn));
}

void JournalRecorder::add(const WireAccess& access) {
    const bool isOut = access.kind == WireAccess::Kind::FrameOut;
    if (word_ && word_->isDoubtful)
        word_.reset();
    if (word_) {
        word_->isOut = word_->isOut || isOut;
    } else if (isOut) {
        settleCommand();
        command_ = access.frame;
        commandBegin_ = microseconds();
    } else if (command_) {
        writeCommand(&access.frame);
    }
}

/// The command on its way has got no answer.
void JournalRecorder::settleCommand() {
    if (command_)
        writeCommand(nullptr);
}

void JournalRecorder::writeCommand(const UsbFrame* answer) {
    Json line{{"kind", "command"},
              {"us", commandBegin_},
              {"took", microseconds() - commandBegin_},
              {"frame", frameText(*std::exchange(command_, std::nullopt))}};
    line["answer"] = answer != nullptr ? Json(frameText(*answer)) : Json();
    write(line);
}

void JournalRecorder::pinsWritten(PinRegister which) {
    settleCommand();
    const bool isData = which == PinRegister::Data;
    const std::uint8_t value =
        isData ? session_.DataPortPins.value() : session_.ControlPortPins.value();
    (isData ? settings_.data : settings_.control) = value;
    Json line = object("pins");
    line["register"] = isData ? "data" : "control";
    line["value"] = value;
    write(line);
}

/// A box during a word reports its failure, or that it could not be made a frame.
void JournalRecorder::boxShows(const MessageBox& box) {
    if (word_ && settings_.onDongle && !word_->isOut && parts_.dongle.isPresent())
        word_->isDoubtful = true;
    else
        wordFails();
    Json line = object("box");
    line["title"] = box.title;
    line["text"] = box.text;
    write(line);
}

void JournalRecorder::runProgresses() {
    const std::optional<RunProgress>& progress = parts_.multiple.progress();
    if (!progress || !progress->waitUntil || *progress->waitUntil == waitUntil_)
        return;
    settleCommand();
    waitUntil_ = *progress->waitUntil;
    Json line = object("wait");
    line["for"] = parts_.multiple.remainingWait() / microsecond;
    write(line);
}

Json JournalRecorder::object(const char* kind) const {
    return {{"kind", kind}, {"us", microseconds()}};
}

void JournalRecorder::write(const Json& object) {
    writeLine(object.dump(-1, ' ', false, Json::error_handler_t::replace) + '\n');
}

void JournalRecorder::writeLine(std::string_view line) {
    if (!file_)
        return;
    try {
        file_->add(line);
    } catch (const Failure& failure) {
        failure_ = failure.what();
        file_.reset();
        failed.raise();
    }
}

} // namespace bitlux
