#pragma once

#include "support/test_bench.h"
#include "waveform/waveform.h"

#include <string>

#include <fmt/format.h>

namespace bitlux::test {

/// The program on the virtual bench with its waveform recording on.
struct WaveformBench : TestBench {
    using TestBench::TestBench;

    /// Records from here on.
    void record(std::size_t limit = WordRecorder::usualLimit) { program.waveform().start(limit); }

    void setType(int type) {
        get<forms::TabStrip>("frmConfigureSPI.TabStripSPItype").click(type);
        program.dialog().cmdApply_Click();
    }

    [[nodiscard]] Waveform last() { return waveformOf(program.waveform().words().back()); }
};

inline char letterOf(Level level) {
    return level == Level::Unknown ? '?' : level == Level::High ? 'H' : 'L';
}

/// As "H 0L 8H": the level before, then each edge with its time, in microseconds where it is whole.
inline std::string textOf(const WaveLine& line) {
    std::string text(1, letterOf(line.before));
    for (const WaveLine::Edge& edge : line.edges)
        text += edge.at % 1000 == 0 ? fmt::format(" {}{}", edge.at / 1000, letterOf(edge.to))
                                    : fmt::format(" {}ns{}", edge.at, letterOf(edge.to));
    return text;
}

/// The four lines as "CS, CLK, DI, DO".
inline std::string linesOf(const Waveform& waveform) {
    std::string text;
    for (std::size_t i = 0; i < Waveform::firstExtra; ++i)
        text += (i == 0 ? "" : ", ") + textOf(waveform.lines.at(i));
    return text;
}

/// Each bit as "7:1/0@3": number, sent, received and when it was sampled in microseconds.
inline std::string bitsOf(const Waveform& waveform) {
    std::string text;
    for (const WaveBit& bit : waveform.bits)
        text += fmt::format("{}{}:{}/{}@{}", text.empty() ? "" : " ", bit.number,
                            static_cast<int>(bit.sent),
                            bit.received ? std::to_string(static_cast<int>(*bit.received)) : "?",
                            static_cast<double>(bit.sampledAt) / 1000);
    return text;
}

} // namespace bitlux::test
