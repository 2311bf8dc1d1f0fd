#include "transfer/word_engine.h"

#include "platform/failure.h"
#include "transfer/clocking_type.h"

#include <array>
#include <utility>

#include <fmt/format.h>

namespace bitlux {

namespace {

/// What clocking out the bits of a word needs, gathered once a word.
struct BitRun {
    ParallelPort& port;
    PortPins<8>& shadow;
    const std::int16_t* word;
    std::int16_t* samples;
    int length;
    std::int16_t address;
    /// The data register by element (0, 1) and clock level (0, 1).
    std::array<std::array<std::uint8_t, 2>, 2> byte;
};

/// Nothing but port access and shadow between edges: everything about the type and the order is
/// settled when this is compiled. False at the first element that is no bit; the bits before it
/// are out then.
template <int Type, bool MsbFirst>
bool clockBits(const BitRun& run) {
    constexpr const ClockingType& type = clockingType(Type);
    const int length = run.length;
    const auto status = static_cast<std::int16_t>(run.address + statusRegister);
    for (int position = 0; position < length; ++position) {
        const int i = MsbFirst ? length - 1 - position : position;
        const auto element = static_cast<std::uint16_t>(run.word[i]);
        if (element > 1) [[unlikely]]
            return false;
        const auto step = [&]<BusStep What, bool Skippable>() {
            if constexpr (What == BusStep::Sample) {
                run.samples[i] = static_cast<std::int16_t>(run.port.Inp(status));
            } else {
                if (Skippable && i == length - 1)
                    return;
                const std::uint8_t value = run.byte[element][What == BusStep::ClockHigh ? 1 : 0];
                run.shadow.setValue(value);
                PinLayer::write(run.port, run.address, value);
            }
        };
        step.template operator()<type.steps[0], false>();
        step.template operator()<type.steps[1], false>();
        step.template operator()<type.steps[2], type.skipsTopElement>();
    }
    return true;
}

using ClockBits = bool (*)(const BitRun&);

template <int... Types>
constexpr auto clockBitsByType(std::integer_sequence<int, Types...>) {
    return std::array<std::array<ClockBits, 2>, sizeof...(Types)>{
        {{&clockBits<Types + 1, false>, &clockBits<Types + 1, true>}...}};
}

constexpr auto clockBitsOf = clockBitsByType(std::make_integer_sequence<int, 8>{});

std::array<std::array<std::uint8_t, 2>, 2> registerBytes(const Session& session) {
    using Pins = PortPins<8>;
    std::array<std::array<std::uint8_t, 2>, 2> bytes{};
    for (const std::size_t element : {0U, 1U})
        for (const std::size_t clock : {0U, 1U}) {
            const std::uint8_t withData =
                Pins::with(session.DataPortPins.value(), session.DIPin,
                           element == 1 ? session.DIOneLevel : session.DIZeroLevel);
            bytes[element][clock] =
                Pins::with(withData, session.ClockPin,
                           clock == 1 ? session.ClockHighLevel : session.ClockLowLevel);
        }
    return bytes;
}

} // namespace

void WordEngine::SendSPI() {
    requireSendable();
    const auto length = static_cast<std::size_t>(session_.SPIWordLength);
    session_.WordReceived.assign(length, 0);
    session_.PortStatusSamples.assign(length, 0);
    if (!session_.ParallelPortReady) {
        boxes_.show({.text = "No device available to send SPI Data."});
        return;
    }
    try {
        sendOnParallelPort();
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

void WordEngine::sendOnParallelPort() {
    PortPins<8>& shadow = session_.DataPortPins;
    shadow.setLevel(session_.CSPin, session_.CSAssertLevel);
    pins_.ToggleDataPort();
    const ClockingType& type = clockingType(session_.SPIType);
    if (type.leadIn != ClockingType::noLeadIn) {
        shadow.setLevel(session_.ClockPin, type.leadIn == ConstHigh ? session_.ClockHighLevel
                                                                    : session_.ClockLowLevel);
        pins_.ToggleDataPort();
    }
    const BitRun run{.port = pins_.port(),
                     .shadow = shadow,
                     .word = session_.WordToSend.data(),
                     .samples = session_.PortStatusSamples.data(),
                     .length = session_.SPIWordLength,
                     .address = session_.LPTPortAddress,
                     .byte = registerBytes(session_)};
    const auto byType = static_cast<std::size_t>(session_.SPIType - 1);
    if (!clockBitsOf[byType][session_.MSBFirst == ConstOn ? 1 : 0](run)) {
        session_.LinkFailed = true;
        fail(fmt::format("WordToSend(i) is neither a 1 or a 0!!!{}"
                         "Check the USB cable and restart program",
                         lineBreak));
        return;
    }
    endWord();
    if (!decode()) {
        fail("There was a problem with the received data.  Cannot continue.");
        return;
    }
    wordTransferred.raise();
}

void WordEngine::endWord() {
    PortPins<8>& shadow = session_.DataPortPins;
    const ClockingType& type = clockingType(session_.SPIType);
    const std::int16_t idleClock =
        type.idle == ConstHigh ? session_.ClockHighLevel : session_.ClockLowLevel;
    if (type.ending == WordEnding::ClockRestsFirst) {
        shadow.setLevel(session_.ClockPin, idleClock);
        shadow.setLevel(session_.DIPin, session_.DIZeroLevel);
        pins_.ToggleDataPort();
    } else if (type.ending == WordEnding::ChipDeselectFirst) {
        shadow.setLevel(session_.CSPin, session_.CSIdleLevel);
        pins_.ToggleDataPort();
    }
    shadow.setLevel(session_.CSPin, session_.CSIdleLevel);
    shadow.setLevel(session_.DIPin, session_.DIZeroLevel);
    shadow.setLevel(session_.ClockPin, idleClock);
    pins_.ToggleDataPort();
}

bool WordEngine::decode() {
    // Without a branch, so that the loop is vectorised.
    const auto mask = static_cast<std::int16_t>(1 << session_.DOPin);
    const std::int16_t highValue = session_.DOHighValue;
    const std::int16_t lowValue = session_.DOLowValue;
    const std::int16_t* samples = session_.PortStatusSamples.data();
    std::int16_t* received = session_.WordReceived.data();
    const int length = session_.SPIWordLength;
    bool unclear = false;
    for (int i = 0; i < length; ++i) {
        const int masked = samples[i] & mask;
        unclear |= masked != mask && masked != 0;
        received[i] = masked == mask ? highValue : lowValue;
    }
    return !unclear;
}

void WordEngine::fail(const std::string& text) {
    boxes_.show({.text = text});
    sendFailed.raise();
}

} // namespace bitlux
