#include "platform/forms/near_names.h"
#include "python/bindings.h"

#include <algorithm>
#include <chrono>
#include <optional>
#include <thread>
#include <utility>
#include <vector>

#include <fmt/format.h>

#include <pybind11/functional.h>
#include <pybind11/stl.h>

namespace bitlux::python {

namespace {

using BenchHolder = std::shared_ptr<ScriptBench>;

/// The variables of the session.
struct SessionView {
    BenchHolder bench;
};

Interruption interruptionOfPython() {
    return {.check =
                [] {
                    if (PyErr_CheckSignals() != 0)
                        throw ScriptError{py::error_already_set()};
                },
            .sleep =
                [](std::int64_t nanoseconds) {
                    const py::gil_scoped_release others;
                    std::this_thread::sleep_for(std::chrono::nanoseconds(nanoseconds));
                }};
}

std::vector<std::int16_t> addressesFrom(const std::vector<int>& ports) {
    std::vector<std::int16_t> addresses;
    for (const int port : ports) {
        if (port <= 0 || port > 0xFFFF)
            throw py::value_error("A port has an address from 1 to 0xFFFF");
        addresses.push_back(static_cast<std::int16_t>(port));
    }
    return addresses;
}

struct StartOptions {
    std::string device;
    std::optional<std::string> bus;
    std::string clock;
    std::vector<int> ports;
    bool dongle;
    std::string commandLine;
    std::vector<std::string> markers;
    std::vector<std::string> answers;
};

BenchHolder makeBench(const StartOptions& options) {
    if (options.bus && *options.bus != "port" && *options.bus != "dongle")
        throw py::value_error(R"(bus is "port" or "dongle")");
    if (options.clock != "virtual" && options.clock != "real")
        throw py::value_error(R"(clock is "virtual" or "real")");
    BenchSetup setup{.device = options.device,
                     .bus = options.bus,
                     .ports = addressesFrom(options.ports),
                     .dongle = options.dongle,
                     .commandLine = options.commandLine,
                     .markers = options.markers,
                     .answers = {},
                     .realTime = options.clock == "real"};
    for (const std::string& answer : options.answers)
        setup.answers.push_back(answerFrom(answer));
    return std::make_shared<ScriptBench>(std::move(setup), interruptionOfPython());
}

std::vector<std::string> controlNames(ScriptBench& bench, const std::string& form) {
    std::vector<std::string> names;
    for (const forms::Control* control : bench.program().forms().form(form).controls())
        names.push_back(control->fullName());
    return names;
}

/// The form and the rest of a name like "frmMain.Form_Load".
std::pair<forms::Form*, std::string> split(ScriptBench& bench, const std::string& name) {
    const std::size_t point = name.find('.');
    if (point == std::string::npos)
        throw forms::UnknownName(name, {});
    return {&bench.program().forms().form(name.substr(0, point)), name.substr(point + 1)};
}

py::object call(ScriptBench& bench, const std::string& name, const py::args& arguments) {
    forms::Values values;
    for (const py::handle& argument : arguments)
        values.push_back(fromPython(argument));
    return toPython(bench.act([&] {
        const auto [form, procedure] = split(bench, name);
        return form->callWith(procedure, values);
    }));
}

py::object get(ScriptBench& bench, const std::string& name) {
    return toPython(bench.act([&] {
        const auto [form, variable] = split(bench, name);
        return form->readVariable(variable);
    }));
}

void set(ScriptBench& bench, const std::string& name, const py::object& value) {
    const forms::Value given = fromPython(value);
    bench.act([&] {
        const auto [form, variable] = split(bench, name);
        form->writeVariable(variable, given);
    });
}

void at(ScriptBench& bench, double milliseconds, const py::function& action) {
    bench.at(milliseconds, [action] {
        try {
            action();
        } catch (py::error_already_set& raised) {
            throw ScriptError{raised};
        }
    });
}

py::int_ transfer(ScriptBench& bench, const py::int_& word, int bits, int type) {
    std::vector<std::int16_t> sent = bitsOf(word);
    const int length = bits != 0 ? bits : bench.program().session().SPIWordLength;
    if (length >= 0 && static_cast<int>(sent.size()) > length)
        throw py::value_error(fmt::format("The word has more than {} bits", length));
    return numberOf(bench.act([&] { return bench.transfer(std::move(sent), bits, type); }));
}

py::list traceOf(ScriptBench& bench) {
    py::list result;
    for (const WireAccess& access : bench.trace().accesses()) {
        const bool out = access.kind == WireAccess::Kind::FrameOut;
        if (out || access.kind == WireAccess::Kind::FrameIn)
            result.append(py::make_tuple(
                out ? "OUT" : "IN", py::bytes(reinterpret_cast<const char*>(access.frame.data()),
                                              access.frame.size())));
        else
            result.append(py::make_tuple(access.kind == WireAccess::Kind::Write ? "W" : "R",
                                         static_cast<std::uint16_t>(access.address), access.value));
    }
    return result;
}

const SessionVariable& variableNamed(const std::string& name) {
    const auto variables = sessionVariables();
    const auto found =
        std::find_if(variables.begin(), variables.end(),
                     [&name](const SessionVariable& variable) { return variable.name == name; });
    if (found != variables.end())
        return *found;
    std::vector<std::string> names;
    for (const SessionVariable& variable : variables)
        names.emplace_back(variable.name);
    throw forms::UnknownName("session." + name, forms::nearNames(name, names));
}

BenchControls& virtualBench(ScriptBench& bench) {
    if (bench.bench() == nullptr)
        throw Failure(Failure::Kind::OutOfRange, "On hardware there is no virtual bench");
    return *bench.bench();
}

void bindSession(py::module_& module) {
    py::class_<SessionView>(
        module, "Session",
        "The variables of the program by name. Lists are copies: assign a whole one.")
        .def("__getattr__",
             [](const SessionView& self, const std::string& name) {
                 return toPython(variableNamed(name).place(self.bench->program().session()));
             })
        .def("__setattr__",
             [](const SessionView& self, const std::string& name, const py::object& value) {
                 assign(variableNamed(name).place(self.bench->program().session()), name, value);
             })
        .def("__dir__", [](const SessionView&) {
            std::vector<std::string> names;
            for (const SessionVariable& variable : sessionVariables())
                names.emplace_back(variable.name);
            return names;
        });
}

} // namespace

void bindBench(py::module_& module) {
    bindMessages(module);
    bindSession(module);
    bindVirtualBench(module);
    py::class_<ScriptBench, BenchHolder>(
        module, "Bench",
        "The program without its window, on the virtual bench or on hardware.\n\n"
        R"(With bus="dongle" or bus="port" it is ready to send in hexadecimal; without, it is )"
        "as\n"
        "the program starts on what the bench offers: ports, a dongle, a command line (the name "
        "of\n"
        "a configuration file), marker files. answers are those of boxes during the start.\n"
        "Time is virtual and passes only while something waits, or clock=\"real\".\n\n"
        "The settings stay in the session until something changes them. A bench ends with its\n"
        "with block, with close(), or when nobody has it any more.")
        .def(py::init([](std::string device, std::optional<std::string> bus, std::string clock,
                         std::vector<int> ports, bool dongle, std::string commandLine,
                         std::vector<std::string> markers, std::vector<std::string> answers) {
                 return makeBench({.device = std::move(device),
                                   .bus = std::move(bus),
                                   .clock = std::move(clock),
                                   .ports = std::move(ports),
                                   .dongle = dongle,
                                   .commandLine = std::move(commandLine),
                                   .markers = std::move(markers),
                                   .answers = std::move(answers)});
             }),
             py::kw_only(), py::arg("device") = "loopback", py::arg("bus") = py::none(),
             py::arg("clock") = "virtual", py::arg("ports") = std::vector<int>{address378},
             py::arg("dongle") = false, py::arg("command_line") = "",
             py::arg("markers") = std::vector<std::string>{},
             py::arg("answers") = std::vector<std::string>{})
        .def_static(
            "hardware", [] { return std::make_shared<ScriptBench>(interruptionOfPython()); },
            "The program on the ports and dongles of this machine.")
        .def("__enter__", [](BenchHolder self) { return self; })
        .def("__exit__", [](ScriptBench& self, const py::args&) { self.program().end(); })
        .def(
            "__getitem__",
            [](BenchHolder self, const std::string& name) {
                return ControlHandle(std::move(self), name);
            },
            py::arg("name"), "A control by its name, as b[\"frmMain.cmdSI_single(3)\"].")
        .def(
            "forms", [](ScriptBench& self) { return self.program().forms().names(); },
            "The names of all forms.")
        .def(
            "controls",
            [](ScriptBench& self, const std::string& form) {
                return self.act([&] { return controlNames(self, form); });
            },
            py::arg("form"), "The names of all controls of a form, as b[...] takes them.")
        .def(
            "procedures",
            [](ScriptBench& self, const std::string& form) {
                return self.act([&] { return self.program().forms().form(form).procedures(); });
            },
            py::arg("form"), "The names of all procedures of a form.")
        .def(
            "variables",
            [](ScriptBench& self, const std::string& form) {
                return self.act([&] { return self.program().forms().form(form).variables(); });
            },
            py::arg("form"), "The names of all variables of a form.")
        .def(
            "show",
            [](ScriptBench& self, const std::string& form) {
                self.act([&] { self.program().forms().show(form); });
            },
            py::arg("form"), "Show a form and bring it to the front.")
        .def(
            "activate",
            [](ScriptBench& self, const std::string& form) {
                self.act([&] { self.program().forms().activate(form); });
            },
            py::arg("form"), "Bring a form to the front; the one that was there leaves it.")
        .def(
            "deactivate",
            [](ScriptBench& self, const std::string& form) {
                self.act([&] { self.program().forms().deactivate(form); });
            },
            py::arg("form"), "Take a form from the front.")
        .def(
            "unload",
            [](ScriptBench& self, const std::string& form) {
                self.act([&] { self.program().forms().unload(form); });
            },
            py::arg("form"), "Let a form go; it is made anew when it is touched the next time.")
        .def(
            "visible",
            [](ScriptBench& self, const std::string& form) {
                return self.act([&] { return self.program().forms().isVisible(form); });
            },
            py::arg("form"), "Whether a form is shown.")
        .def("call", call, py::arg("procedure"),
             "Call a procedure of a form, with arguments; returns what it gives.")
        .def("get", get, py::arg("name"), R"(A variable of a form, as "ZT72518.ParityBit".)")
        .def("set", set, py::arg("name"), py::arg("value"), "Set a variable of a form.")
        .def_property_readonly(
            "session", [](BenchHolder self) { return SessionView{std::move(self)}; },
            "The variables of the program.")
        .def(
            "answer",
            [](ScriptBench& self, const py::args& answers) {
                for (const py::handle& answer : answers)
                    self.boxes().answer(answerFrom(py::cast<std::string>(answer)));
            },
            "Answers for coming boxes, in order. A box with one button takes the next one only\n"
            "if that names its button.")
        .def_property_readonly("messages", messagesOf, "The boxes shown so far.")
        .def(
            "answer_file",
            [](ScriptBench& self, const py::args& answers) {
                for (const py::handle& answer : answers)
                    self.fileDialogs().answer(py::cast<std::optional<std::string>>(answer));
            },
            "Answers for coming file dialogs, in order; None cancels.")
        .def_property_readonly("file_dialogs", fileDialogsOf, "The file dialogs shown so far.")
        .def(
            "run_for",
            [](ScriptBench& self, double milliseconds) {
                self.act([&] { self.runFor(milliseconds); });
            },
            py::arg("ms"), "Let time pass: timers fire, and actions of at() run.")
        .def_property_readonly("clock_ms", &ScriptBench::milliseconds,
                               "Milliseconds on the clock of the bench.")
        .def("at", at, py::arg("ms"), py::arg("action"),
             "Call action in so many milliseconds, also within a call that blocks.")
        .def_property_readonly("trace", traceOf,
                               "What went over the wire: (\"W\", 0x378, 5), (\"R\", 0x379, 32),\n"
                               R"(("OUT", bytes), ("IN", bytes).)")
        .def(
            "clear_trace", [](ScriptBench& self) { self.trace().clear(); },
            "Forget what went over the wire so far.")
        .def_property("recording", &ScriptBench::recording, &ScriptBench::record,
                      "Whether what goes over the wire is recorded; the trace grows\n"
                      "until clear_trace(), the waveform keeps the last words.")
        .def_property_readonly("bench", virtualBench, py::return_value_policy::reference_internal,
                               "The virtual bench.")
        .def("transfer", transfer, py::arg("word"), py::arg("bits") = 0, py::arg("type") = 0,
             "Send a word and return the answer, in the shape in force but for bits and type. No\n"
             "form takes part, and nothing is logged.")
        .def(
            "open",
            [](ScriptBench& self, const std::string& name) { self.act([&] { self.open(name); }); },
            py::arg("file_name"), "Open a configuration file.")
        .def(
            "save",
            [](ScriptBench& self, const std::string& name) { self.act([&] { self.save(name); }); },
            py::arg("file_name"), "Save the configuration.")
        .def(
            "vcd", [](ScriptBench& self, const std::string& name) { self.program().saveVcd(name); },
            py::arg("file_name"),
            "Save the waveform of the last words, as many as 16 MB hold, as a value change dump.")
        .def(
            "sr", [](ScriptBench& self, const std::string& name) { self.program().saveSr(name); },
            py::arg("file_name"), "Save it as a sigrok session.")
        .def(
            "close", [](ScriptBench& self) { self.act([&] { self.program().close(); }); },
            "The close box of the main window, with its question when something is unsaved.")
        .def_property_readonly(
            "running", [](ScriptBench& self) { return self.program().running(); },
            "Whether the program has not ended.");
}

} // namespace bitlux::python
