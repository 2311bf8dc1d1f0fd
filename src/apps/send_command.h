#pragma once

#include "apps/outlet.h"
#include "apps/waveform_output.h"

#include <cstdint>
#include <ostream>
#include <string>
#include <vector>

namespace CLI {
class App;
}

namespace bitlux {

/// What `bitlux send` was told.
struct SendOptions {
    OutletOptions outlet;
    std::int64_t bits = 8;
    int type = 1;
    std::string order = "msb";
    std::string cs = "low";
    std::string di = "high";
    std::string dataOut = "high";
    std::string pins = "2,3,4,12"; ///< CS, DI, CLK, DO
    int clock = 1;                 ///< of the dialog's clocks of the dongle, from the fastest
    std::string trace;             ///< a file, "-" for standard output
    std::string log;               ///< likewise
    WaveformOptions waveform;
    std::vector<std::string> words;
};

/// Adds the command to the command line; `options` is filled when it is parsed.
CLI::App& addSendCommand(CLI::App& app, SendOptions& options);

/// Sends the words through the forms and prints a line for each, sent and received. A message box
/// ends the run, its text on `errors`. Returns the exit code of the program.
int runSendCommand(const SendOptions& options, std::ostream& output, std::ostream& errors);

} // namespace bitlux
