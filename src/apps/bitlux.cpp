#include "apps/chip/chip_command.h"
#include "apps/doctor_command.h"
#include "apps/examples.h"
#include "apps/list_command.h"
#include "apps/replay_command.h"
#include "apps/run_command.h"
#include "apps/send_command.h"
#include "apps/show_command.h"
#include "platform/forms/near_names.h"
#include "platform/printable.h"

#include <algorithm>
#include <iostream>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include <CLI/CLI.hpp>
#include <fmt/format.h>
#include <fmt/ranges.h>

namespace bitlux {
namespace {

/// The commands and their arguments.
class Commands {
public:
    explicit Commands(CLI::App& app)
        : send_(addSendCommand(app, sendOptions_)),
          run_(addRunCommand(app, runOptions_)),
          replay_(addReplayCommand(app, replayOptions_)),
          show_(addShowCommand(app, showOptions_)),
          list_(addListCommand(app, listOptions_)),
          chip_(addChipCommand(app, chipOptions_)) {
        addDoctorCommand(app, doctorOptions_);
    }

    /// Runs the command that was parsed.
    [[nodiscard]] int perform() const {
        if (send_.parsed())
            return runSendCommand(sendOptions_, std::cout, std::cerr);
        if (run_.parsed())
            return runRunCommand(runOptions_, std::cout, std::cerr);
        if (replay_.parsed())
            return runReplayCommand(replayOptions_, std::cout, std::cerr);
        if (show_.parsed())
            return runShowCommand(showOptions_, std::cout, std::cerr);
        if (list_.parsed())
            return runListCommand(listOptions_, thisMachine(), std::cout);
        if (chip_.parsed())
            return runChipCommand(chipOptions_, std::cout, std::cerr);
        return runDoctorCommand(doctorOptions_, thisMachine(), std::cout, std::cerr);
    }

private:
    SendOptions sendOptions_;
    RunOptions runOptions_;
    ReplayOptions replayOptions_;
    ShowOptions showOptions_;
    ListOptions listOptions_;
    ChipOptions chipOptions_;
    DoctorOptions doctorOptions_;
    const CLI::App& send_;
    const CLI::App& run_;
    const CLI::App& replay_;
    const CLI::App& show_;
    const CLI::App& list_;
    const CLI::App& chip_;
};

/// The message for a first argument that is neither a command nor an option.
std::optional<std::string> unknownCommand(const CLI::App& app, std::string_view given) {
    std::vector<std::string> names;
    for (const CLI::App* command : app.get_subcommands({}))
        names.push_back(command->get_name());
    if (given.starts_with('-') || std::find(names.begin(), names.end(), given) != names.end())
        return std::nullopt;
    constexpr std::size_t most = 60;
    const std::vector<std::string> near = forms::nearNames(given, names);
    return near.empty() ? fmt::format("There is no command \"{}\"; there is {}.",
                                      printable(given, most), fmt::join(names, ", "))
                        : fmt::format("There is no command \"{}\"; near: {}.",
                                      printable(given, most), fmt::join(near, ", "));
}

} // namespace
} // namespace bitlux

int main(int argc, char** argv) {
    CLI::App app("Bitlux Forge on the command line", "bitlux");
    app.require_subcommand(1);
    app.set_version_flag("--version", std::string(BITLUX_VERSION));
    const bitlux::Commands commands(app);
    bitlux::addExamples(app, {"bitlux send --bench loopback --bits 16 A5C3", "bitlux doctor"});
    if (argc > 1)
        if (const auto problem = bitlux::unknownCommand(app, argv[1])) {
            std::cerr << *problem << '\n';
            return bitlux::usageError;
        }
    try {
        app.parse(argc, argv);
    } catch (const CLI::ParseError& error) {
        return app.exit(error) == 0 ? 0 : bitlux::usageError;
    }
    try {
        return commands.perform();
    } catch (const std::exception& error) {
        std::cerr << error.what() << '\n';
        return 1;
    }
}
