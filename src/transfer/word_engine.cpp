#include "transfer/word_engine.h"

#include "platform/failure.h"
#include "transfer/clocking_type.h"
#include "transfer/dongle_frame.h"

#include <array>
#include <utility>

#include <fmt/format.h>

namespace bitlux {

namespace {

/// A pin of the data register with its two levels, as bits of the register.
struct Line {
    Line(int pin, std::int16_t oneLevel, std::int16_t otherLevel)
        : mask(PortPins<8>::mask(pin)),
          one(oneLevel != 0 ? mask : std::uint8_t{0}),
          other(otherLevel != 0 ? mask : std::uint8_t{0}) {}

    /// The register value with this pin at the level of `isOne`.
    [[nodiscard]] std::uint8_t in(std::uint8_t value, bool isOne) const {
        return static_cast<std::uint8_t>((value & ~mask) | (isOne ? one : other));
    }

    std::uint8_t mask;
    std::uint8_t one;
    std::uint8_t other;
};

/// What sending a word needs, gathered once a word. Lines may share a pin; then the one that is
/// set last wins, as the order of the settings tells.
struct WordRun {
    ParallelPort& port;
    std::int16_t address;
    bool isFast; ///< the mode of the port; nothing can change it while a word is on its way
    PortPins<8>& shadow;
    const std::int16_t* word;
    std::int16_t* samples;
    int length;
    Line chipSelect; ///< one: asserted
    Line dataIn;     ///< one: a one
    Line clock;      ///< one: high
};

// The engine touches the bus here alone: all levels of a moment, and a sample of an element.

void put(const WordRun& run, std::uint8_t value) {
    if (run.isFast) [[unlikely]]
        PinLayer::write(run.port, run.address, value);
    else
        run.port.Outp(run.address, value);
}

void sample(const WordRun& run, std::ptrdiff_t element) {
    const auto status = static_cast<std::int16_t>(run.address + statusRegister);
    run.samples[element] = static_cast<std::int16_t>(run.port.Inp(status));
}

/// Elements from the first to travel on that are bits; the others are not sent.
int countBits(const std::int16_t* word, int length, bool msbFirst) {
    // Looked through without a branch first: nearly always there are no others.
    std::int16_t all = 0;
    for (int i = 0; i < length; ++i)
        all = static_cast<std::int16_t>(all | word[i]);
    if ((all & ~1) == 0) [[likely]]
        return length;
    int bits = 0;
    while ((word[msbFirst ? length - 1 - bits : bits] & ~1) == 0)
        ++bits;
    return bits;
}

/// The data register by clock level (0, 1).
using ClockBytes = std::array<std::uint8_t, 2>;

constexpr std::size_t levelAfter(BusStep step) {
    return step == BusStep::ClockHigh ? 1 : 0;
}

/// Clocks out the first `bits` elements with nothing but port access between edges: everything
/// about the type and the order is settled when this is compiled.
template <int Type, bool MsbFirst>
void clockBits(const WordRun& run, const std::array<ClockBytes, 2>& bytesOfElement, int bits) {
    constexpr const ClockingType& type = clockingType(Type);
    constexpr std::ptrdiff_t forward = MsbFirst ? -1 : 1;
    // Copies: for all the compiler knows, a port could change what the references refer to.
    const WordRun here = run;
    const auto bytes = bytesOfElement;
    const auto sendBit = [&]<bool SkipsLastStep>(std::ptrdiff_t i) {
        const ClockBytes& byte = bytes[static_cast<std::size_t>(here.word[i])];
        const auto take = [&]<BusStep What>() {
            if constexpr (What == BusStep::Sample)
                sample(here, i);
            else
                put(here, byte[levelAfter(What)]);
        };
        take.template operator()<type.steps[0]>();
        take.template operator()<type.steps[1]>();
        if constexpr (!SkipsLastStep)
            take.template operator()<type.steps[2]>();
    };

    const std::ptrdiff_t top = here.length - 1;
    std::ptrdiff_t i = MsbFirst ? top : 0;
    std::ptrdiff_t end = i + forward * bits;
    const bool skips = type.skipsTopElement && bits > 0 && (MsbFirst || end > top);
    if (MsbFirst && skips) { // the top element is the first
        sendBit.template operator()<true>(i);
        --i;
    }
    if (!MsbFirst && skips) // the top element is the last
        --end;
    for (; i != end; i += forward)
        sendBit.template operator()<false>(i);
    if (!MsbFirst && skips)
        sendBit.template operator()<true>(top);
}

/// The clock level that the last of the first `bits` elements left behind.
template <int Type, bool MsbFirst>
std::size_t clockLevelAfter(int bits, int length) {
    constexpr const ClockingType& type = clockingType(Type);
    constexpr BusStep last = type.steps[2] == BusStep::Sample ? type.steps[1] : type.steps[2];
    const bool lastIsTop = bits == (MsbFirst ? 1 : length);
    return levelAfter(type.skipsTopElement && lastIsTop ? type.steps[1] : last);
}

/// Sends a word. False when it has an element that is no bit; the bits before it are out then,
/// chip select stays asserted and the clock where it is. The shadow follows; a port that fails in
/// a word leaves it as chip select was asserted.
template <int Type, bool MsbFirst>
bool sendWord(const WordRun& run) {
    constexpr const ClockingType& type = clockingType(Type);
    constexpr bool idleHigh = type.idle == ConstHigh;
    const int bits = countBits(run.word, run.length, MsbFirst);
    std::uint8_t value = run.chipSelect.in(run.shadow.value(), true);
    std::array<ClockBytes, 2> bytes{};
    for (const bool one : {false, true})
        for (const bool high : {false, true})
            bytes[one][high] = run.clock.in(run.dataIn.in(value, one), high);

    run.shadow.setValue(value);
    put(run, value);
    if constexpr (type.leadIn != ClockingType::noLeadIn) {
        value = run.clock.in(value, type.leadIn == ConstHigh);
        put(run, value);
    }
    clockBits<Type, MsbFirst>(run, bytes, bits);
    if (bits > 0) {
        const int lastElement = MsbFirst ? run.length - bits : bits - 1;
        value = bytes[static_cast<std::size_t>(run.word[lastElement])]
                     [clockLevelAfter<Type, MsbFirst>(bits, run.length)];
    }
    run.shadow.setValue(value);
    if (bits != run.length)
        return false;

    if constexpr (type.ending == WordEnding::ClockRestsFirst) {
        value = run.dataIn.in(run.clock.in(value, idleHigh), false);
        put(run, value);
    } else if constexpr (type.ending == WordEnding::ChipDeselectFirst) {
        value = run.chipSelect.in(value, false);
        put(run, value);
    }
    value = run.clock.in(run.dataIn.in(run.chipSelect.in(value, false), false), idleHigh);
    run.shadow.setValue(value);
    put(run, value);
    return true;
}

using SendWord = bool (*)(const WordRun&);

/// By type less 1, then MSB first.
using SendWordTable = std::array<std::array<SendWord, 2>, 8>;

template <int... Types>
constexpr SendWordTable sendWordByType(std::integer_sequence<int, Types...>) {
    return {{{&sendWord<Types + 1, false>, &sendWord<Types + 1, true>}...}};
}

constexpr SendWordTable sendWordOf = sendWordByType(std::make_integer_sequence<int, 8>{});

} // namespace

void WordEngine::SendSPI() {
    session_.WordAnswered = false;
    requireSendable();
    const auto length = static_cast<std::size_t>(session_.SPIWordLength);
    session_.WordReceived.assign(length, 0);
    session_.PortStatusSamples.assign(length, 0);
    if (usesDongle()) {
        sendThroughDongle();
        return;
    }
    if (!session_.ParallelPortReady) {
        failures_.show({.text = "No device available to send SPI Data."});
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
    UsbFrame answer{};
    if (!dongle_.exchange(buildWordFrame(session_), answer, DongleLink::Wait::Unlimited))
        return;
    unpackAnswer(answer, session_);
    finish();
}

void WordEngine::sendOnParallelPort() {
    wordStarting.raise();
    ParallelPort& port = pins_.port();
    const WordRun run{
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
    const auto& byOrder = sendWordOf[static_cast<std::size_t>(session_.SPIType - 1)];
    const bool isWhole = byOrder[session_.MSBFirst == ConstOn ? 1 : 0](run);
    port.complete();
    if (!isWhole) {
        session_.LinkFailed = true;
        fail(fmt::format("WordToSend(i) is neither a 1 or a 0!!!{}"
                         "Check the USB cable and restart program",
                         lineBreak));
    } else if (!decode()) {
        fail("There was a problem with the received data.  Cannot continue.");
    } else {
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
