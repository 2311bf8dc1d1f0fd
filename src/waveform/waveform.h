#pragma once

#include "waveform/word_record.h"

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace bitlux {

enum class Level : std::uint8_t { Low, High, Unknown };

/// The levels of a line during a word.
struct WaveLine {
    struct Edge {
        std::int64_t at;
        Level to;
    };

    std::string name;
    Level before = Level::Unknown;
    std::vector<Edge> edges; ///< in order, each changes the level

    /// At an edge, the level after it.
    [[nodiscard]] Level levelAt(std::int64_t at) const;
};

/// A bit of the word in transfer.
struct WaveBit {
    /// The time in which a line has the level of the bit; empty when it never had.
    struct Window {
        std::int64_t from = 0;
        std::int64_t to = 0;
    };

    int number = 0; ///< from 0, the least significant
    bool sent = false;
    std::optional<bool> received; ///< nothing when it was not sampled
    std::int64_t sampledAt = 0;
    Window dataIn;
    Window dataOut;
};

/// The lines during a word. Times are nanoseconds since the word began.
///
/// On the parallel port these are the levels written and read. DO is known only where it was
/// sampled. A sample is valid from the last write before it, since nothing has moved the chip after
/// that, until the next one; before the first it is unknown. Through the dongle these are the
/// levels that the frame commands.
struct Waveform {
    static constexpr std::size_t chipSelect = 0;
    static constexpr std::size_t clock = 1;
    static constexpr std::size_t dataIn = 2;
    static constexpr std::size_t dataOut = 3;
    static constexpr std::size_t firstExtra = 4;

    std::uint64_t number = 0; ///< of the word since the recording began
    bool asCommanded = false;
    bool complete = false;
    bool rebuilt = false; ///< the edges are spread evenly over the word's time
    int type = 1;
    int length = 0; ///< bits
    bool msbFirst = true;
    bool selectedWhenHigh = false;
    std::int64_t origin = 0; ///< when the word began, on the clock of the recording
    std::int64_t end = 0;    ///< of the word
    /// CS, CLK, DI and DO, then the extra pins that changed since the previous word. Those have
    /// edges before the word's begin.
    std::vector<WaveLine> lines{};
    std::vector<WaveBit> bits{}; ///< in the order of transfer
    /// Upper-case hexadecimal with "?" for a digit with an unknown bit.
    std::string sent{};
    std::string received{};
};

/// A record without a frame or an access gives a waveform without edges.
Waveform waveformOf(const WordRecord& record);

} // namespace bitlux
