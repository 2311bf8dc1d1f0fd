// Starting a bench: the arguments of a script, and what the program does while it waits.

#include "python/bindings.h"
#include "workbench/library_chips.h"

#include <array>
#include <chrono>
#include <limits>
#include <thread>
#include <utility>

#include <pybind11/stl.h>

namespace bitlux::python {

namespace {

using SteadyClock = std::chrono::steady_clock;

/// The shortest time between two checks for signals: a check costs as much as a short word.
constexpr std::chrono::milliseconds signalInterval{20};

Interruption interruptionOfPython(const std::shared_ptr<BenchLock>& lock) {
    return {.check =
                [last = SteadyClock::now()]() mutable {
                    const SteadyClock::time_point now = SteadyClock::now();
                    if (now - last < signalInterval)
                        return;
                    last = now;
                    const py::gil_scoped_acquire gil;
                    if (PyErr_CheckSignals() != 0)
                        throw ScriptError{py::error_already_set()};
                },
            .sleep =
                [lock](std::int64_t nanoseconds) {
                    const WithoutGil others;
                    const unsigned depth = lock->releaseAll();
                    std::this_thread::sleep_for(std::chrono::nanoseconds(nanoseconds));
                    lock->takeBack(depth);
                }};
}

std::optional<Bus> busFrom(const std::optional<std::string>& name) {
    if (!name)
        return std::nullopt;
    constexpr std::array buses{std::pair{"port", Bus::Port}, std::pair{"dongle", Bus::Dongle},
                               std::pair{"ftdi", Bus::Adapter}};
    for (const auto& [text, bus] : buses)
        if (*name == text)
            return bus;
    throw py::value_error(R"(bus is "port", "dongle" or "ftdi")");
}

WordSettings wordsFrom(std::optional<int> bits, std::optional<int> type) {
    if (bits && (*bits < 1 || *bits > 160))
        throw py::value_error("bits is 1 to 160");
    if (type && (*type < 1 || *type > 8))
        throw py::value_error("type is 1 to 8");
    WordSettings words;
    words.bits = bits;
    words.type = type;
    return words;
}

void checkClock(const std::optional<int>& adapterClock) {
    if (adapterClock && *adapterClock < 1)
        throw py::value_error("adapter_clock is a number of bytes a second");
}

void checkWords(std::optional<int> bits, std::optional<int> type, const std::string& config) {
    if (!config.empty() && (bits || type))
        throw py::value_error("bits and type are those of the file config");
}

std::vector<std::int16_t> addressesFrom(const std::vector<int>& ports) {
    std::vector<std::int16_t> addresses;
    for (const int port : ports) {
        if (port <= 0 || port > std::numeric_limits<std::uint16_t>::max())
            throw py::value_error("A port has an address from 1 to 0xFFFF");
        addresses.push_back(static_cast<std::int16_t>(port));
    }
    return addresses;
}

PortChoice portFrom(const py::object& port) {
    const std::string text = py::cast<std::string>(py::str(port));
    return argument([&] { return portChoiceFrom(text); });
}

BenchHolder makeBench(BenchSetup setup, const std::vector<std::string>& answers) {
    for (const std::string& answer : answers)
        setup.answers.push_back(answerFrom(answer));
    argument([&] { return makeBenchDevice(setup.device); });
    const auto lock = std::make_shared<BenchLock>();
    return std::make_shared<ScriptBench>(std::move(setup), interruptionOfPython(lock), lock);
}

BenchHolder benchOf(std::string device, const std::optional<std::string>& bus,
                    const std::string& clock, const std::vector<int>& ports, bool dongle,
                    std::string commandLine, std::vector<std::string> markers,
                    const std::vector<std::string>& answers, std::optional<int> bits,
                    std::optional<int> type, std::string config, bool adapter,
                    std::optional<int> adapterClock) {
    checkClock(adapterClock);
    if (clock != "virtual" && clock != "real")
        throw py::value_error(R"(clock is "virtual" or "real")");
    checkWords(bits, type, config);
    if (!bus && (bits || type))
        throw py::value_error("bits and type need a bus");
    return makeBench({.device = std::move(device),
                      .bus = busFrom(bus),
                      .words = wordsFrom(bits, type),
                      .config = std::move(config),
                      .ports = addressesFrom(ports),
                      .dongle = dongle,
                      .adapter = adapter,
                      .adapterClock = adapterClock,
                      .commandLine = std::move(commandLine),
                      .markers = std::move(markers),
                      .answers = {},
                      .realTime = clock == "real"},
                     answers);
}

BenchHolder hardware(const std::optional<std::string>& bus, const py::object& port,
                     const std::optional<std::string>& serial, std::optional<int> bits,
                     std::optional<int> type, const std::string& config,
                     std::optional<int> adapterClock, bool keepLines) {
    checkClock(adapterClock);
    checkWords(bits, type, config);
    HardwareSetup setup{
        .bus = busFrom(bus), .choice = {}, .words = wordsFrom(bits, type), .config = config};
    if (!port.is_none() && (setup.bus == Bus::Dongle || setup.bus == Bus::Adapter || serial))
        throw py::value_error("port is of no use with a dongle or an adapter");
    if (serial && setup.bus == Bus::Port)
        throw py::value_error("serial is of no use with the port");
    if (!port.is_none()) {
        setup.choice.port = portFrom(port);
        setup.bus = Bus::Port;
    }
    const bool onAdapter = setup.bus == Bus::Adapter;
    if (!onAdapter && (adapterClock || keepLines))
        throw py::value_error(R"(adapter_clock and keep_lines need bus="ftdi")");
    if (serial && !onAdapter) {
        setup.choice.serial = *serial;
        setup.bus = Bus::Dongle;
    }
    setup.choice.dongles = !setup.bus || setup.bus == Bus::Dongle;
    setup.choice.adapters = {.isDemanded = onAdapter,
                             .serial = onAdapter ? serial.value_or("") : "",
                             .clock = adapterClock,
                             .keepsLines = keepLines};
    const auto lock = std::make_shared<BenchLock>();
    const WithoutGil others;
    return std::make_shared<ScriptBench>(setup, interruptionOfPython(lock), lock);
}

} // namespace

void bindStart(BenchClass& bench) {
    bench
        .def(py::init(&benchOf), py::kw_only(), py::arg("device") = "loopback",
             py::arg("bus") = py::none(), py::arg("clock") = "virtual",
             py::arg("ports") = std::vector<int>{address378}, py::arg("dongle") = false,
             py::arg("command_line") = "", py::arg("markers") = std::vector<std::string>{},
             py::arg("answers") = std::vector<std::string>{}, py::arg("bits") = py::none(),
             py::arg("type") = py::none(), py::arg("config") = "", py::arg("adapter") = false,
             py::arg("adapter_clock") = py::none(),
             "The program on the virtual bench.\n\n"
             "device is a name that \"bitlux list\" prints; ports are the base addresses of LPT1 "
             "to\n"
             "LPT3, 1 to 0xFFFF each. With bus, \"dongle\", \"port\" or \"ftdi\", it is ready to "
             "send words of\n"
             "bits (1 to 160, else 8) on an SPI type (1 to 8, else 1); with config as that "
             "configuration\n"
             "file says, which without bus chooses the bus too. dongle and adapter plug one in "
             "also for\n"
             "another bus; adapter_clock is in bytes a second. answers are those of boxes during\n"
             "the start. Raises ValueError for what there is none of, PortUnusable and LinkFailed\n"
             "when the bus is not there, and as open.")
        .def_static(
            "hardware", &hardware, py::kw_only(), py::arg("bus") = py::none(),
            py::arg("port") = py::none(), py::arg("serial") = py::none(),
            py::arg("bits") = py::none(), py::arg("type") = py::none(), py::arg("config") = "",
            py::arg("adapter_clock") = py::none(), py::arg("keep_lines") = false,
            "The program on this machine, ready to send in hexadecimal.\n\n"
            "bus is \"dongle\", \"port\" or, for an FTDI adapter, \"ftdi\"; without it the dongle "
            "when there\n"
            "is one, else the port. port is \"lpt1\" to \"lpt3\" or a base address, serial the "
            "serial\n"
            "number of the dongle or the adapter, adapter_clock its bytes a second, of which the "
            "nearest\n"
            "are made (see the variable AdapterClock of the session). With keep_lines its lines "
            "keep\n"
            "their levels at the end; else they become inputs.\n"
            "bits 1 to 160 (else 8), type 1 to 8 (else 1). With config the settings are those of "
            "that\n"
            "configuration file, which without bus chooses the bus too. Raises ValueError for "
            "wrong\n"
            "arguments, PortUnusable or LinkFailed, with what there is instead or with the program "
            "that\n"
            "holds the dongle, when it cannot be made ready, and as open.");
}

} // namespace bitlux::python
