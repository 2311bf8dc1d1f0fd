#include "journal/journal_player.h"

#include "platform/conversions.h"
#include "platform/failure.h"
#include "platform/scoped_value.h"
#include "sending/word_text.h"

#include <algorithm>
#include <utility>

namespace bitlux {

namespace {

std::vector<std::int16_t> bitsFrom(const std::string& digits, int bits) {
    constexpr std::size_t bitsOfDigit = 4;
    std::vector<std::int16_t> word(static_cast<std::size_t>(bits));
    for (std::size_t i = 0; i < word.size(); ++i) {
        const char digit = digits[digits.size() - 1 - i / bitsOfDigit];
        word[i] = static_cast<std::int16_t>(hexDigit(digit) >> i % bitsOfDigit & 1);
    }
    return word;
}

} // namespace

void JournalPlayer::begin(const JournalSettings& settings) {
    take(settings);
    if (!parts_.engine.usesDongle() && parts_.session.ParallelPortReady) {
        parts_.pins.ToggleDataPort();
        if (hasControlPin(parts_.session))
            parts_.pins.ToggleControlPort();
    }
    endNow_ = parts_.clock.nanoseconds();
}

void JournalPlayer::play(const JournalEntry& entry) {
    if (std::holds_alternative<JournalRemark>(entry.content))
        return;
    pauseBefore(entry);
    if (const auto* settings = std::get_if<JournalSettings>(&entry.content))
        take(*settings);
    else if (const auto* word = std::get_if<JournalWord>(&entry.content))
        send(entry, *word);
    else if (const auto* command = std::get_if<JournalCommand>(&entry.content))
        send(entry, *command);
    else if (const auto* pins = std::get_if<JournalPins>(&entry.content))
        write(*pins);
    endThen_ = entry.end();
    endNow_ = parts_.clock.nanoseconds();
}

void JournalPlayer::pauseBefore(const JournalEntry& entry) {
    const std::int64_t pause = entry.begin - endThen_;
    if (parts_.waitUntil && pause >= shortestPause)
        parts_.waitUntil(endNow_ + pause);
}

void JournalPlayer::take(const JournalSettings& settings) {
    if (parts_.chooseBus && settings.onDongle != parts_.engine.usesDongle())
        parts_.chooseBus(settings.onDongle);
    settings.applyTo(parts_.session);
}

void JournalPlayer::send(const JournalEntry& entry, const JournalWord& word) {
    Session& session = parts_.session;
    parts_.engine.requireCarriedLength();
    session.WordToSend = bitsFrom(word.sent, session.SPIWordLength);
    const ScopedValue updatesPins(session.USBPinUpdate,
                                  static_cast<std::int16_t>(word.updatesPins ? 1 : 0));
    session.USBFrameTopBit = word.topBit && parts_.engine.usesDongle();
    ++words_;
    parts_.engine.SendSPI();
    compare({.line = entry.line,
             .word = words_,
             .bits = session.SPIWordLength,
             .sent = word.sent,
             .then = word.received,
             .now = session.WordAnswered ? std::optional(hexText(session.WordReceived))
                                         : std::nullopt});
}

void JournalPlayer::send(const JournalEntry& entry, const JournalCommand& command) {
    if (!parts_.engine.usesDongle())
        throw Failure(Failure::Kind::OutOfRange,
                      "This is a command to the dongle, and the words go to the parallel port.");
    UsbFrame answer{};
    const bool isAnswered =
        parts_.dongle.exchange(command.frame, answer, DongleLink::Wait::Limited);
    const auto text = [](const UsbFrame& frame) { return frameText(frame); };
    compare({.line = entry.line,
             .sent = text(command.frame),
             .then = command.answer ? std::optional(text(*command.answer)) : std::nullopt,
             .now = isAnswered ? std::optional(text(answer)) : std::nullopt});
}

void JournalPlayer::write(const JournalPins& pins) {
    const bool isData = pins.pinRegister == PinRegister::Data;
    if (isData)
        parts_.session.DataPortPins.setValue(pins.value);
    else
        parts_.session.ControlPortPins.setValue(pins.value);
    if (parts_.engine.usesDongle() || !parts_.session.ParallelPortReady)
        return;
    if (isData)
        parts_.pins.ToggleDataPort();
    else
        parts_.pins.ToggleControlPort();
}

void JournalPlayer::compare(const Difference& difference) {
    if (difference.then == difference.now)
        return;
    ++differences_;
    differs.raise(difference);
}

} // namespace bitlux
