#include "waveform/rebuilt_words.h"

#include "transfer/port_word.h"
#include "waveform/wire_levels.h"

#include <algorithm>
#include <utility>

namespace bitlux {

namespace {

/// Records the writes, and answers reads with the original samples.
class RepeatingPort : public ParallelPort {
public:
    explicit RepeatingPort(const SentWord& word) : ParallelPort(false), word_(word) {}

    std::int32_t Inp(std::int16_t address) override {
        const int element = word_.msbFirst ? word_.length - 1 - reads_ : reads_;
        ++reads_;
        const std::int16_t value = word_.samples()[static_cast<std::size_t>(element)];
        note(WireAccess::Kind::Read, address, value);
        return value;
    }
    void Outp(std::int16_t address, std::int16_t value) override {
        note(WireAccess::Kind::Write, address, value);
    }
    void EnablePorts(std::int16_t, std::int16_t) override {}
    void DisablePorts(std::int16_t, std::int16_t) override {}
    std::int16_t GetLPTPortAddress(std::int16_t) override { return 0; }

    [[nodiscard]] std::vector<WireAccess> takeAccesses() { return std::move(accesses_); }

private:
    void note(WireAccess::Kind kind, std::int16_t address, std::int16_t value) {
        accesses_.push_back({.nanoseconds = 0,
                             .kind = kind,
                             .address = address,
                             .value = static_cast<std::uint8_t>(value)});
    }

    const SentWord& word_;
    int reads_ = 0;
    std::vector<WireAccess> accesses_;
};

std::vector<WireAccess> portAccesses(const SentWord& word) {
    const SentWord::Levels& levels = word.levels;
    const SentWord::Pins& pins = word.pins;
    RepeatingPort port(word);
    PortPins<8> shadow;
    shadow.setValue(word.dataBefore);
    std::vector<std::int16_t> samples(static_cast<std::size_t>(word.length));
    sendPortWord({.port = port,
                  .address = word.address,
                  .isFast = false,
                  .shadow = shadow,
                  .word = word.sent().data(),
                  .samples = samples.data(),
                  .length = word.length,
                  .chipSelect = {pins.CSPin, levels.CSAssertLevel, levels.CSIdleLevel},
                  .dataIn = {pins.DIPin, levels.DIOneLevel, levels.DIZeroLevel},
                  .clock = {pins.ClockPin, levels.ClockHighLevel, levels.ClockLowLevel}},
                 word.type, word.msbFirst);
    std::vector<WireAccess> accesses = port.takeAccesses();
    const auto count = static_cast<std::int64_t>(accesses.size());
    const std::int64_t time = std::max(word.end - word.begin, count); // no two at the same time
    for (std::int64_t n = 0; n < count; ++n)
        accesses[static_cast<std::size_t>(n)].nanoseconds = word.begin + time * (n + 1) / count;
    return accesses;
}

std::vector<WireAccess> dongleFrames(const SentWord& word) {
    return {{.nanoseconds = word.begin, .kind = WireAccess::Kind::FrameOut, .frame = word.frame},
            {.nanoseconds = word.end, .kind = WireAccess::Kind::FrameIn, .frame = word.answer}};
}

WordShape shapeOf(const SentWord& word, std::shared_ptr<const ExtraPinNames> extraPins) {
    return {.onDongle = word.onDongle,
            .length = word.length,
            .type = word.type,
            .msbFirst = word.msbFirst,
            .selectedWhenHigh = word.levels.CSAssertLevel == ConstHigh,
            .dataInOneIsHigh = word.levels.DIOneLevel == ConstHigh,
            .dataOutOneIsHigh = word.levels.DOHighValue == 1,
            .address = word.address,
            .chipSelectPin = word.pins.CSPin,
            .clockPin = word.pins.ClockPin,
            .dataInPin = word.pins.DIPin,
            .dataOutPin = word.pins.DOPin,
            .extraPins = std::move(extraPins)};
}

} // namespace

std::vector<WordRecord> rebuiltRecords(const std::vector<SentWord>& words,
                                       const std::shared_ptr<const ExtraPinNames>& extraPins) {
    std::vector<WordRecord> records;
    for (const SentWord& word : words) {
        WordRecord record;
        record.shape = shapeOf(word, extraPins);
        record.complete = true;
        record.rebuilt = !word.onDongle; // a word through the dongle is drawn as commanded anyway
        if (!records.empty())
            carryLevels(records.back(), record);
        else if (word.onDongle)
            record.donglePinsBefore = CommandedWord(word.frame).extraPins;
        if (!word.onDongle) {
            record.dataBefore = word.dataBefore;
            record.controlBefore = word.controlBefore;
        }
        record.accesses = word.onDongle ? dongleFrames(word) : portAccesses(word);
        records.push_back(std::move(record));
    }
    return records;
}

} // namespace bitlux
