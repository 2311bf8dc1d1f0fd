#include "apps/chip/chip_command.h"
#include "apps/doctor_command.h"
#include "apps/list_command.h"
#include "apps/run_command.h"
#include "apps/send_command.h"
#include "apps/show_command.h"

#include <iostream>

#include <CLI/CLI.hpp>

namespace bitlux {
namespace {

/// The commands with what each was told.
class Commands {
public:
    explicit Commands(CLI::App& app)
        : send_(addSendCommand(app, sendOptions_)),
          run_(addRunCommand(app, runOptions_)),
          show_(addShowCommand(app, showOptions_)),
          list_(addListCommand(app, listOptions_)),
          chip_(addChipCommand(app, chipOptions_)) {
        addDoctorCommand(app, doctorOptions_);
    }

    /// Runs the one that was parsed.
    [[nodiscard]] int perform() const {
        if (send_.parsed())
            return runSendCommand(sendOptions_, std::cout, std::cerr);
        if (run_.parsed())
            return runRunCommand(runOptions_, std::cout, std::cerr);
        if (show_.parsed())
            return runShowCommand(showOptions_, std::cout, std::cerr);
        if (list_.parsed())
            return runListCommand(listOptions_, std::cout);
        if (chip_.parsed())
            return runChipCommand(chipOptions_, std::cout, std::cerr);
        return runDoctorCommand(doctorOptions_, thisMachine(), std::cout, std::cerr);
    }

private:
    SendOptions sendOptions_;
    RunOptions runOptions_;
    ShowOptions showOptions_;
    ListOptions listOptions_;
    ChipOptions chipOptions_;
    DoctorOptions doctorOptions_;
    const CLI::App& send_;
    const CLI::App& run_;
    const CLI::App& show_;
    const CLI::App& list_;
    const CLI::App& chip_;
};

} // namespace
} // namespace bitlux

int main(int argc, char** argv) {
    constexpr int usageError = 2;
    CLI::App app("Bitlux Forge on the command line", "bitlux");
    app.require_subcommand(1);
    app.set_version_flag("--version", std::string(BITLUX_VERSION));
    const bitlux::Commands commands(app);
    try {
        app.parse(argc, argv);
    } catch (const CLI::ParseError& error) {
        return app.exit(error) == 0 ? 0 : usageError;
    }
    try {
        return commands.perform();
    } catch (const std::exception& error) {
        std::cerr << error.what() << '\n';
        return 1;
    }
}
