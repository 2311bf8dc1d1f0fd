#include "apps/outlet_options.h"

#include "bench/device.h"
#include "bench/dongle_fault.h"
#include "platform/chosen_port.h"
#include "platform/failure.h"
#include "workbench/library_chips.h"

#include <utility>

#include <CLI/CLI.hpp>

namespace bitlux {

namespace {

/// Accepts what `read` reads without Failure.
CLI::Validator readable(const std::string& name, std::function<void(const std::string&)> read) {
    return {[read = std::move(read)](const std::string& text) -> std::string {
                try {
                    read(text);
                    return {};
                } catch (const Failure& failure) {
                    return failure.what();
                }
            },
            name};
}

void addMachineOptions(CLI::App& command, OutletOptions& options) {
    command.add_option("--port", options.port, "Which parallel port of this machine, if not LPT1")
        ->check(readable("{lpt1,lpt2,lpt3}|ADDRESS",
                         [](const std::string& text) { portChoiceFrom(text); }));
    command
        .add_option("--serial", options.serial,
                    "Which dongle of this machine, by its serial number; doctor tells them")
        ->type_name("NUMBER");
}

void addBenchOptions(CLI::App& command, OutletOptions& options) {
    command.add_option("--bench", options.bench, "Send to a device of the virtual bench")
        ->check(CLI::IsMember(benchDeviceNames()));
    command.add_option("--replies", options.replies, "Answers of the device scripted")
        ->check(readable("HEX,HEX,...", [](const std::string& text) {
            for (const std::string& number : splitAtCommas(text))
                replyFromHex(number);
        }));
    command
        .add_option("--fault", options.faults,
                    "What goes wrong with the dongle of the virtual bench: silent, late:MS, "
                    "short:BYTES, stalled, babbling, gone, gone:MS; then @FRAME, /CHANCE; "
                    "or busy: it cannot be opened")
        ->check(readable("FAULT", [](const std::string& text) { dongleFaultFrom(text); }))
        ->take_all()
        ->allow_extra_args(false);
    command
        .add_option("--turn-on", options.switches,
                    "Turn on a flag, a pin or a fault of the chip on the virtual bench")
        ->type_name("SWITCH")
        ->take_all()
        ->allow_extra_args(false);
    command.add_option("--seed", options.seed, "Repeats the chances of --fault")
        ->capture_default_str();
}

void checkTogether(const CLI::App& command, const OutletOptions& options) {
    const bool onBench = !options.bench.empty();
    const auto refuse = [](const char* option, const char* why) {
        throw CLI::ValidationError(option, why);
    };
    if (!options.faults.empty() && (!onBench || options.bus != "dongle"))
        refuse("--fault", "needs --bench and --bus dongle");
    if (!options.switches.empty() && !onBench)
        refuse("--turn-on", "needs --bench");
    if ((options.bench == "scripted") != (command.count("--replies") > 0))
        refuse("--replies", "belongs to --bench scripted, and it needs it");
    for (const char* option : {"--port", "--serial"})
        if (onBench && command.count(option) > 0)
            refuse(option, "chooses on this machine, and --bench sends to none");
    if (!options.port.empty() && (options.bus == "dongle" || !options.serial.empty()))
        refuse("--port", "is of no use with a dongle");
    if (!options.serial.empty() && options.bus == "port")
        refuse("--serial", "is of no use with --bus port");
}

} // namespace

std::optional<Bus> OutletOptions::chosenBus() const {
    if (bus == "dongle" || !serial.empty())
        return Bus::Dongle;
    if (bus == "port" || !port.empty())
        return Bus::Port;
    return std::nullopt;
}

std::vector<std::string> splitAtCommas(const std::string& text) {
    std::vector<std::string> parts;
    std::size_t start = 0;
    for (std::size_t comma = text.find(','); comma != std::string::npos;
         comma = text.find(',', start)) {
        parts.push_back(text.substr(start, comma - start));
        start = comma + 1;
    }
    parts.push_back(text.substr(start));
    return parts;
}

std::function<void()> addOutletOptions(CLI::App& command, OutletOptions& options,
                                       const std::string& busHelp) {
    command.add_option("--bus", options.bus, busHelp)->check(CLI::IsMember({"dongle", "port"}));
    addMachineOptions(command, options);
    addBenchOptions(command, options);
    return [&command, &options] { checkTogether(command, options); };
}

} // namespace bitlux
