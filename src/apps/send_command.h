#pragma once

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
    std::string bench;               ///< a device of the virtual bench, empty for this machine
    std::string bus;                 ///< "dongle", "port" or empty
    std::vector<std::string> faults; ///< of the dongle on the virtual bench
    std::uint32_t seed = 1;
    std::int64_t bits = 8;
    int type = 1;
    std::string order = "msb";
    std::string cs = "low";
    std::string di = "high";
    std::string dataOut = "high";
    std::string pins = "2,3,4,12";     ///< CS, DI, CLK, DO
    int clock = 1;                     ///< of the dialog's clocks of the dongle, from the fastest
    std::string trace;                 ///< a file, "-" for standard output
    std::string log;                   ///< likewise
    std::string vcd;                   ///< a file
    std::string sr;                    ///< a file
    std::string replies;               ///< hexadecimal numbers between commas
    std::vector<std::string> switches; ///< of the chip on the virtual bench, turned on
    std::vector<std::string> words;
};

/// Adds the command to the command line; `options` is filled when it is parsed.
CLI::App& addSendCommand(CLI::App& app, SendOptions& options);

/// Sends the words through the forms and prints a line for each, sent and received. A message box
/// ends the run, its text on `errors`. Returns the exit code of the program.
int runSendCommand(const SendOptions& options, std::ostream& output, std::ostream& errors);

} // namespace bitlux
