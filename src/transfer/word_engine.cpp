#include "transfer/word_engine.h"

#include "platform/failure.h"
#include "transfer/dongle_frame.h"
#include "transfer/port_word.h"

#include <fmt/format.h>

namespace bitlux {

void WordEngine::SendSPI() {
    session_.WordAnswered = false;
    requireSendable();
    if (usesDongle()) {
        clearAnswer();
        sendThroughDongle();
        return;
    }
    if (!session_.ParallelPortReady) {
        clearAnswer();
        failures_.show({.text = "No device available to send SPI Data."});
        return;
    }
    try {
        sendOnParallelPort();
    } catch (...) {
        if (!session_.WordAnswered)
            clearAnswer();
        failOnPort();
    }
}

void WordEngine::clearAnswer() {
    const auto length = static_cast<std::size_t>(session_.SPIWordLength);
    session_.WordReceived.assign(length, 0);
    session_.PortStatusSamples.assign(length, 0);
}

/// Handles what was thrown if it says that the port is lost, else passes it on.
void WordEngine::failOnPort() {
    try {
        throw;
    } catch (const Failure& failure) {
        if (failure.kind() != Failure::Kind::PortUnusable)
            throw;
        session_.LinkFailed = true;
        fail(failure.what());
    }
}

void WordEngine::requireSendable() const {
    if (session_.SPIWordLength < 1)
        throw Failure(Failure::Kind::OutOfRange,
                      fmt::format("Subscript out of range: a word of {} bits cannot be sent",
                                  session_.SPIWordLength));
    if (session_.WordToSend.size() < static_cast<std::size_t>(session_.SPIWordLength))
        throw Failure(Failure::Kind::OutOfRange,
                      fmt::format("Subscript out of range: WordToSend has {} of {} bits",
                                  session_.WordToSend.size(), session_.SPIWordLength));
    if (session_.SPIType < 1 || session_.SPIType > 8)
        throw Failure(
            Failure::Kind::OutOfRange,
            fmt::format("Subscript out of range: there is no SPI type {}", session_.SPIType));
}

void WordEngine::requireCarriedLength() const {
    if (usesDongle() && !isCarriedWhole(session_.SPIWordLength))
        throw Failure(
            Failure::Kind::OutOfRange,
            fmt::format("The dongle carries words of 8, 16, 24, 32 or 40 bits, not of {}.",
                        session_.SPIWordLength));
}

void WordEngine::sendThroughDongle() {
    wordStarting.raise();
    wordLeaving.raise();
    const UsbFrame frame = buildWordFrame(session_);
    UsbFrame answer{};
    const std::int64_t begin = sentWords_ ? sentWords_->now() : 0;
    if (!dongle_.exchange(frame, answer, DongleLink::Wait::Unlimited))
        return;
    unpackAnswer(answer, session_);
    if (sentWords_)
        sentWords_->add(session_, begin, frame, answer);
    finish();
}

void WordEngine::sendOnParallelPort() {
    // Both are filled below.
    session_.WordReceived.resize(static_cast<std::size_t>(session_.SPIWordLength));
    session_.PortStatusSamples.resize(static_cast<std::size_t>(session_.SPIWordLength));
    wordStarting.raise();
    const SentWords::Before before =
        sentWords_ ? sentWords_->before(session_) : SentWords::Before{};
    ParallelPort& port = pins_.port();
    if (port.collects()) [[unlikely]]
        pins_.driveUsedPins();
    const PortWord word{
        .port = port,
        .address = session_.LPTPortAddress,
        .isFast = PinLayer::needsDirectAccess(port),
        .shadow = session_.DataPortPins,
        .word = session_.WordToSend.data(),
        .samples = session_.PortStatusSamples.data(),
        .length = session_.SPIWordLength,
        .chipSelect = {session_.CSPin, session_.CSAssertLevel, session_.CSIdleLevel},
        .dataIn = {session_.DIPin, session_.DIOneLevel, session_.DIZeroLevel},
        .clock = {session_.ClockPin, session_.ClockHighLevel, session_.ClockLowLevel}};
    const bool isWhole = sendPortWord(word, session_.SPIType, session_.MSBFirst == ConstOn);
    port.complete();
    if (port.collects()) [[unlikely]]
        port.takeSamples(session_.PortStatusSamples);
    if (!isWhole) {
        session_.WordReceived.assign(session_.WordReceived.size(), 0);
        session_.LinkFailed = true;
        fail(fmt::format("WordToSend(i) is neither a 1 or a 0!!!{}"
                         "Check the USB cable and restart program",
                         lineBreak));
    } else if (!decode()) {
        fail("There was a problem with the received data.  Cannot continue.");
    } else {
        if (sentWords_)
            sentWords_->add(session_, before);
        finish();
    }
}

void WordEngine::finish() {
    session_.WordAnswered = true;
    wordTransferred.raise();
}

bool WordEngine::decode() {
    // Without a branch and in one width, so that the loop is vectorised.
    const auto mask = static_cast<std::int16_t>(1 << session_.DOPin);
    const std::int16_t highValue = session_.DOHighValue;
    const std::int16_t lowValue = session_.DOLowValue;
    const std::int16_t* __restrict samples = session_.PortStatusSamples.data();
    std::int16_t* __restrict received = session_.WordReceived.data();
    const int length = session_.SPIWordLength;
    std::int16_t unclear = 0;
    for (int i = 0; i < length; ++i) {
        const auto masked = static_cast<std::int16_t>(samples[i] & mask);
        const auto high = static_cast<std::int16_t>(masked == mask ? -1 : 0);
        const auto low = static_cast<std::int16_t>(masked == 0 ? -1 : 0);
        unclear = static_cast<std::int16_t>(unclear | ~(high | low));
        received[i] = static_cast<std::int16_t>((high & highValue) | (low & lowValue));
    }
    return unclear == 0;
}

void WordEngine::fail(const std::string& text) {
    failures_.show({.text = text});
    sendFailed.raise();
}

} // namespace bitlux
