#include "apps/outlet_options.h"

#include "bench/device.h"
#include "bench/dongle_fault.h"
#include "platform/chosen_port.h"
#include "platform/conversions.h"
#include "platform/failure.h"
#include "workbench/library_chips.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <string_view>
#include <utility>

#include <CLI/CLI.hpp>

namespace bitlux {

namespace {

constexpr std::array<std::string_view, 4> dongleClocks{"4M", "1M", "500k", "62.5k"};

/// A rate such as "1M", "62.5k" or "250000", in whole bytes a second.
std::optional<int> rateFrom(std::string_view text) {
    double factor = 1;
    if (text.ends_with('k'))
        factor = 1e3;
    else if (text.ends_with('M'))
        factor = 1e6;
    if (factor > 1)
        text.remove_suffix(1);
    constexpr double highest = 1e9;
    const std::optional<double> number = wholeNumber<double>(text);
    if (!number || !(*number * factor >= 1 && *number * factor <= highest))
        return std::nullopt;
    return static_cast<int>(std::lround(*number * factor));
}

/// Accepts a bus; what follows "ftdi:" is a serial number.
CLI::Validator busName() {
    return {[](const std::string& text) -> std::string {
                const bool isBus = text == "dongle" || text == "port" || text == "ftdi" ||
                                   (text.starts_with("ftdi:") && text.size() > 5);
                return isBus ? "" : "A bus is dongle, port, ftdi or ftdi:SERIAL";
            },
            "{dongle,port,ftdi}[:SERIAL]"};
}

void addBus(CLI::App& command, OutletOptions& options, const std::string& help) {
    command
        .add_option_function<std::string>(
            "--bus",
            [&options](const std::string& text) {
                const std::size_t colon = text.find(':');
                options.bus = text.substr(0, colon);
                if (colon != std::string::npos)
                    options.serial = text.substr(colon + 1);
            },
            help)
        ->check(busName());
    command
        .add_option("--clock", options.clock,
                    "Clock in Hz: of the dongle 4M, 1M, 500k or 62.5k; of an adapter the bytes a "
                    "second, from which the nearest is made that it has")
        ->type_name("{4M,1M,500k,62.5k}|HZ")
        ->default_str("1M");
    command.add_flag("--keep-lines", options.keepsLines,
                     "The lines of the adapter keep their levels at the end");
}

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
                    "Which dongle of this machine, or adapter with --bus ftdi, by its serial "
                    "number; \"bitlux list\" shows them")
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
                    "What goes wrong with the dongle or the adapter of the virtual bench: silent, "
                    "late:MS, short:BYTES, stalled, babbling (dongle), gone, gone:MS; then "
                    "@FRAME, /CHANCE; or busy: it cannot be opened")
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

[[noreturn]] void refuse(const char* option, const char* why) {
    throw CLI::ValidationError(option, why);
}

void checkClock(const CLI::App& command, const OutletOptions& options) {
    if (options.clock.empty())
        return;
    if (options.chosenBus() == Bus::Adapter) {
        if (!options.adapterClock())
            refuse("--clock", "is a rate such as 1M, 250k or 100000");
        return;
    }
    const bool takesDongleClock = command.get_option_no_throw("--pins") != nullptr;
    if (!takesDongleClock)
        refuse("--clock", "needs --bus ftdi: the clock of the dongle is in the file");
    if (!options.dongleClock())
        refuse("--clock", "of the dongle is 4M, 1M, 500k or 62.5k");
}

void checkBench(const CLI::App& command, const OutletOptions& options) {
    const bool onBench = !options.bench.empty();
    if (!options.faults.empty() &&
        (!onBench || (options.bus != "dongle" && options.chosenBus() != Bus::Adapter)))
        refuse("--fault", "needs --bench and --bus dongle or ftdi");
    if (!options.switches.empty() && !onBench)
        refuse("--turn-on", "needs --bench");
    if ((options.bench == "scripted") != (command.count("--replies") > 0))
        refuse("--replies", "belongs to --bench scripted, and it needs it");
    if (onBench && !options.port.empty())
        refuse("--port", "chooses on this machine, and --bench sends to none");
    if (onBench && !options.serial.empty())
        refuse(command.count("--serial") > 0 ? "--serial" : "--bus",
               "chooses on this machine, and --bench sends to none");
}

void checkMachine(const OutletOptions& options) {
    const bool onAdapter = options.chosenBus() == Bus::Adapter;
    if (options.keepsLines && !onAdapter)
        refuse("--keep-lines", "needs --bus ftdi");
    if (!options.port.empty() && onAdapter)
        refuse("--port", "is of no use with --bus ftdi");
    if (!options.port.empty() && (options.bus == "dongle" || !options.serial.empty()))
        refuse("--port", "is of no use with a dongle");
    if (!options.serial.empty() && options.bus == "port")
        refuse("--serial", "is of no use with --bus port");
}

} // namespace

std::optional<Bus> OutletOptions::chosenBus() const {
    if (bus == "ftdi")
        return Bus::Adapter;
    if (bus == "dongle" || !serial.empty())
        return Bus::Dongle;
    if (bus == "port" || !port.empty())
        return Bus::Port;
    return std::nullopt;
}

std::optional<int> OutletOptions::dongleClock() const {
    const auto* const found = std::find(dongleClocks.begin(), dongleClocks.end(), clock);
    if (found == dongleClocks.end())
        return std::nullopt;
    return static_cast<int>(found - dongleClocks.begin());
}

std::optional<int> OutletOptions::adapterClock() const {
    return rateFrom(clock);
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
    addBus(command, options, busHelp);
    addMachineOptions(command, options);
    addBenchOptions(command, options);
    return [&command, &options] {
        checkBench(command, options);
        checkMachine(options);
        checkClock(command, options);
    };
}

} // namespace bitlux
