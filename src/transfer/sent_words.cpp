#include "transfer/sent_words.h"

#include <algorithm>
#include <cstring>

namespace bitlux {

void SentWords::add(const Session& session, const Before& before) {
    const auto length = static_cast<std::size_t>(session.SPIWordLength);
    if (length > SentWord::longest)
        return;
    // All is read before it is written, so that neighbours go together.
    const SentWord::Levels levels{
        session.CSAssertLevel,  session.CSIdleLevel,   session.DIOneLevel,  session.DIZeroLevel,
        session.ClockHighLevel, session.ClockLowLevel, session.DOHighValue, session.DOLowValue};
    const SentWord::Pins pins{session.DIPin, session.CSPin, session.ClockPin, session.DOPin};
    SentWord& word = next();
    word.levels = levels;
    word.pins = pins;
    word.begin = before.begin;
    word.onDongle = false;
    word.msbFirst = session.MSBFirst == ConstOn;
    word.length = session.SPIWordLength;
    word.type = session.SPIType;
    word.address = session.LPTPortAddress;
    word.dataBefore = before.data;
    word.controlBefore = session.ControlPortPins.value();
    std::memcpy(word.sent.data(), session.WordToSend.data(), length * sizeof(std::int16_t));
    std::memcpy(word.samples.data(), session.PortStatusSamples.data(),
                length * sizeof(std::int16_t));
    word.end = clock_.nanoseconds();
}

void SentWords::add(const Session& session, std::int64_t begin, const UsbFrame& frame,
                    const UsbFrame& answer) {
    SentWord& word = next();
    word.begin = begin;
    word.onDongle = true;
    word.msbFirst = session.MSBFirst == ConstOn;
    word.frame = frame;
    word.answer = answer;
    word.end = clock_.nanoseconds();
}

std::vector<SentWord> SentWords::words() const {
    std::vector<SentWord> all;
    for (std::size_t n = count_ - std::min(count_, most); n < count_; ++n)
        all.push_back(words_.at(n % most));
    return all;
}

} // namespace bitlux
