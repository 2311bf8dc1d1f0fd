#include "waveform/word_recorder.h"

#include "waveform/wire_levels.h"

namespace bitlux {

namespace {

/// The largest number of accesses kept between two words; of more only the resulting levels are
/// kept.
constexpr std::size_t mostBetween = 1000;

std::size_t bytesOf(const WordRecord& record) {
    return sizeof record + record.accesses.capacity() * sizeof(WireAccess);
}

bool areNamesIn(const Session& session, const ExtraPinNames& names) {
    for (int bit = 0; bit < 8; ++bit)
        if (names.at(static_cast<std::size_t>(bit)) != session.DataPortPins.name(bit))
            return false;
    for (int bit = 0; bit < 4; ++bit)
        if (names.at(static_cast<std::size_t>(bit) + 8) != session.ControlPortPins.name(bit))
            return false;
    return true;
}

} // namespace

ExtraPinNames extraPinNames(const Session& session) {
    ExtraPinNames names;
    for (int bit = 0; bit < 8; ++bit)
        names.at(static_cast<std::size_t>(bit)) = session.DataPortPins.name(bit);
    for (int bit = 0; bit < 4; ++bit)
        names.at(static_cast<std::size_t>(bit) + 8) = session.ControlPortPins.name(bit);
    return names;
}

WordRecorder::WordRecorder(const Session& session, WordEngine& engine, DongleLink& dongle,
                           std::size_t limit, std::vector<WordRecord> before)
    : session_(session),
      engine_(engine),
      limit_(limit),
      subscriptions_{engine.wordStarting.follow([this] { begin(); }),
                     engine.wordTransferred.follow([this] { finish(true); }),
                     engine.sendFailed.follow([this] { finish(false); }),
                     dongle.failed.follow([this] { finish(false); })} {
    for (WordRecord& record : before)
        keep(std::move(record));
    current_.dataBefore = session.DataPortPins.value();
    current_.controlBefore = session.ControlPortPins.value();
    current_.donglePinsBefore =
        static_cast<std::uint16_t>(session.USBExtraPins0 | (session.USBExtraPins1 & 1) << 8);
}

void WordRecorder::add(const WireAccess& access) {
    if (!inWord_) {
        if (access.kind != WireAccess::Kind::Write)
            return;
        if (current_.accesses.size() >= mostBetween)
            forgetBetween();
    }
    current_.accesses.push_back(access);
}

const WordRecord* WordRecorder::word(std::uint64_t number) const {
    if (words_.empty() || number < words_.front().number || number > words_.back().number)
        return nullptr;
    return &words_[static_cast<std::size_t>(number - words_.front().number)];
}

void WordRecorder::begin() {
    if (inWord_) // an exception ended its transfer
        finish(false);
    inWord_ = true;
    current_.firstOfWord = current_.accesses.size();
    takeShape();
}

void WordRecorder::takeShape() {
    WordShape& shape = current_.shape;
    std::shared_ptr<const ExtraPinNames> names =
        words_.empty() ? nullptr : words_.back().shape.extraPins;
    if (!names || !areNamesIn(session_, *names))
        names = std::make_shared<const ExtraPinNames>(extraPinNames(session_));
    shape = {.onDongle = engine_.usesDongle(),
             .length = session_.SPIWordLength,
             .type = session_.SPIType,
             .msbFirst = session_.MSBFirst == ConstOn,
             .selectedWhenHigh = session_.CSAssertLevel == ConstHigh,
             .dataInOneIsHigh = session_.DIOneLevel == ConstHigh,
             .dataOutOneIsHigh = session_.DOHighValue == 1,
             .address = session_.LPTPortAddress,
             .chipSelectPin = session_.CSPin,
             .clockPin = session_.ClockPin,
             .dataInPin = session_.DIPin,
             .dataOutPin = session_.DOPin,
             .extraPins = std::move(names)};
}

void WordRecorder::finish(bool complete) {
    if (!inWord_)
        return;
    inWord_ = false;
    if (current_.accesses.size() == current_.firstOfWord) // nothing was sent
        return;
    current_.complete = complete;
    keep(std::move(current_));
    current_ = {};
    while (bytes_ > limit_ && words_.size() > 1)
        dropOldest();
    const WordRecord& last = words_.back();
    current_.accesses.reserve(last.accesses.size());
    carryLevels(last, current_);
}

void WordRecorder::keep(WordRecord record) {
    record.number = ++count_;
    bytes_ += bytesOf(record);
    words_.push_back(std::move(record));
}

void WordRecorder::dropOldest() {
    WordRecord& oldest = words_.front();
    bytes_ -= bytesOf(oldest);
    current_.accesses = std::move(oldest.accesses);
    current_.accesses.clear();
    words_.pop_front();
}

void WordRecorder::forgetBetween() {
    WordRecord next;
    current_.shape.address = session_.LPTPortAddress;
    carryLevels(current_, next);
    current_ = std::move(next);
}

} // namespace bitlux
