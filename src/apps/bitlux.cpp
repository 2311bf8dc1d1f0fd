#include "apps/doctor_command.h"
#include "apps/send_command.h"

#include <iostream>

#include <CLI/CLI.hpp>

int main(int argc, char** argv) {
    constexpr int usageError = 2;
    CLI::App app("Bitlux Forge on the command line", "bitlux");
    app.require_subcommand(1);
    app.set_version_flag("--version", std::string(BITLUX_VERSION));
    bitlux::SendOptions sendOptions;
    bitlux::DoctorOptions doctorOptions;
    const CLI::App& send = bitlux::addSendCommand(app, sendOptions);
    bitlux::addDoctorCommand(app, doctorOptions);
    try {
        app.parse(argc, argv);
    } catch (const CLI::ParseError& error) {
        return app.exit(error) == 0 ? 0 : usageError;
    }
    try {
        return send.parsed() ? bitlux::runSendCommand(sendOptions, std::cout, std::cerr)
                             : bitlux::runDoctorCommand(doctorOptions, bitlux::thisMachine(),
                                                        std::cout, std::cerr);
    } catch (const std::exception& error) {
        std::cerr << error.what() << '\n';
        return 1;
    }
}
