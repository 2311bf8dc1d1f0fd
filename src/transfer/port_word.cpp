#include "transfer/port_word.h"

#include "session/flag.h"
#include "transfer/clocking_type.h"
#include "transfer/pin_layer.h"

#include <algorithm>
#include <array>
#include <utility>

namespace bitlux {

namespace {

// The engine touches the bus here alone: all levels of a moment, and a sample of an element.

void put(const PortWord& run, std::uint8_t value) {
    if (run.isFast) [[unlikely]]
        PinLayer::write(run.port, run.address, value);
    else
        run.port.Outp(run.address, value);
}

void sample(const PortWord& run, std::ptrdiff_t element) {
    const auto status = static_cast<std::int16_t>(run.address + statusRegister);
    run.samples[element] = static_cast<std::int16_t>(run.port.Inp(status));
}

/// The number of elements, in the order of transfer, that are bits; the others are not sent.
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
void clockBits(const PortWord& run, const std::array<ClockBytes, 2>& bytesOfElement, int bits) {
    constexpr const ClockingType& type = clockingType(Type);
    constexpr std::ptrdiff_t forward = MsbFirst ? -1 : 1;
    // Copies: for all the compiler knows, a port could change what the references refer to.
    const PortWord here = run;
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

template <int Type, bool MsbFirst>
bool sendWord(const PortWord& run) {
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
    if (bits != run.length) {
        std::fill_n(run.samples + (MsbFirst ? 0 : bits), run.length - bits, std::int16_t{0});
        return false;
    }

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

using SendWord = bool (*)(const PortWord&);

/// By type less 1, then MSB first.
using SendWordTable = std::array<std::array<SendWord, 2>, 8>;

template <int... Types>
constexpr SendWordTable sendWordByType(std::integer_sequence<int, Types...>) {
    return {{{&sendWord<Types + 1, false>, &sendWord<Types + 1, true>}...}};
}

constexpr SendWordTable sendWordOf = sendWordByType(std::make_integer_sequence<int, 8>{});

} // namespace

bool sendPortWord(const PortWord& word, int type, bool msbFirst) {
    return sendWordOf[static_cast<std::size_t>(type - 1)][msbFirst ? 1 : 0](word);
}

} // namespace bitlux
