#pragma once

#include "program/program.h"

#include <ostream>
#include <string>

namespace CLI {
class App;
}

namespace bitlux {

/// The files that the waveform of a command's words goes to; empty for none.
struct WaveformOptions {
    std::string vcd;
    std::string sr;

    [[nodiscard]] bool any() const { return !vcd.empty() || !sr.empty(); }
};

void addWaveformOptions(CLI::App& command, WaveformOptions& options);

/// Ends the recording and saves the words that it kept, if there are any. What found no room is
/// told on `errors`; a file that cannot be written raises Failure (File).
void saveWaveform(Program& program, const WaveformOptions& options, std::ostream& errors);

} // namespace bitlux
