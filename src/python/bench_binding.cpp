#include "python/bindings.h"

#include <optional>
#include <string>
#include <utility>
#include <vector>

#include <pybind11/functional.h>
#include <pybind11/stl.h>

namespace bitlux::python {

namespace {

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
    return toPython(act(bench, [&] {
        const auto [form, procedure] = split(bench, name);
        return form->callWith(procedure, values);
    }));
}

py::object get(ScriptBench& bench, const std::string& name) {
    return toPython(act(bench, [&] {
        const auto [form, variable] = split(bench, name);
        return form->readVariable(variable);
    }));
}

void set(ScriptBench& bench, const std::string& name, const py::object& value) {
    const forms::Value given = fromPython(value);
    act(bench, [&] {
        const auto [form, variable] = split(bench, name);
        form->writeVariable(variable, given);
    });
}

double checkedDuration(double milliseconds) {
    constexpr double longest = 1e12; // some 30 years
    if (!(milliseconds >= 0 && milliseconds <= longest))
        throw py::value_error("ms is 0 to 1e12");
    return milliseconds;
}

/// The Python function needs the interpreter lock when it is called, and when it is destroyed.
void at(ScriptBench& bench, double milliseconds, const std::function<void()>& action) {
    const double duration = checkedDuration(milliseconds);
    act(bench, [&] {
        bench.at(duration, [action] {
            const py::gil_scoped_acquire gil;
            try {
                action();
            } catch (py::error_already_set& raised) {
                throw ScriptError{raised};
            }
        });
    });
}

std::string textFrom(const py::handle& value) {
    if (!PyUnicode_Check(value.ptr()))
        throw py::type_error("An answer is a str");
    return py::cast<std::string>(value);
}

void answer(ScriptBench& bench, const py::args& answers) {
    for (const py::handle& answer : answers) {
        const MessageBox::Answer button = answerFrom(textFrom(answer));
        look(bench, [&] {
            demandOpen(bench);
            bench.boxes().answer(button);
        });
    }
}

void answerFile(ScriptBench& bench, const py::args& answers) {
    for (const py::handle& answer : answers) {
        std::optional<std::string> name;
        if (!answer.is_none())
            name = textFrom(answer);
        look(bench, [&] {
            demandOpen(bench);
            bench.fileDialogs().answer(name);
        });
    }
}

BenchControls& virtualBench(ScriptBench& bench) {
    if (bench.bench() == nullptr)
        throw Failure(Failure::Kind::OutOfRange, "On hardware there is no virtual bench");
    return *bench.bench();
}

/// User input on a form, by its name.
auto toForm(void (forms::FormSet::*deed)(std::string_view)) {
    return [deed](ScriptBench& self, const std::string& form) {
        act(self, [&] { (self.program().forms().*deed)(form); });
    };
}

void bindForms(BenchClass& bench) {
    bench
        .def(
            "__getitem__",
            [](BenchHolder self, const std::string& name) {
                return ControlHandle(std::move(self), name);
            },
            py::arg("name"),
            "A control by its name, as b[\"frmMain.cmdSI_single(3)\"]. Raises UnknownName.")
        .def(
            "forms",
            [](ScriptBench& self) {
                return look(self, [&] { return self.program().forms().names(); });
            },
            "The names of all forms.")
        .def(
            "controls",
            [](ScriptBench& self, const std::string& form) {
                return act(self, [&] { return controlNames(self, form); });
            },
            py::arg("form"),
            "The names of all controls of a form, as b[...] takes them. Raises UnknownName.")
        .def(
            "procedures",
            [](ScriptBench& self, const std::string& form) {
                return act(self, [&] { return self.program().forms().form(form).procedures(); });
            },
            py::arg("form"), "The names of all procedures of a form. Raises UnknownName.")
        .def(
            "variables",
            [](ScriptBench& self, const std::string& form) {
                return act(self, [&] { return self.program().forms().form(form).variables(); });
            },
            py::arg("form"), "The names of all variables of a form. Raises UnknownName.")
        .def("show", toForm(&forms::FormSet::show), py::arg("form"),
             "Show a form and bring it to the front. Raises UnknownName, and Failure when a "
             "handler\n"
             "of it fails.")
        .def("activate", toForm(&forms::FormSet::activate), py::arg("form"),
             "Bring a form to the front; the one that was there leaves it. Raises as show.")
        .def("deactivate", toForm(&forms::FormSet::deactivate), py::arg("form"),
             "Take a form from the front. Raises as show.")
        .def("unload", toForm(&forms::FormSet::unload), py::arg("form"),
             "Let a form go; it is made anew when it is touched the next time. frmMain ends the\n"
             "program as close() does. Raises as show.")
        .def(
            "visible",
            [](ScriptBench& self, const std::string& form) {
                return look(self, [&] { return self.program().forms().isVisible(form); });
            },
            py::arg("form"), "Whether a form is shown. Raises UnknownName.")
        .def(
            "call", call, py::arg("procedure"),
            "Call a procedure of a form, as \"frmMain.SetSpiWordLength\", with arguments; returns\n"
            "what it gives. Raises UnknownName, TypeError for an argument that is neither None,\n"
            "bool, int, float nor str, and Failure when the procedure fails or does not take them.")
        .def("get", get, py::arg("name"),
             R"(A variable of a form, as "ZT72518.ParityBit". Raises UnknownName.)")
        .def("set", set, py::arg("name"), py::arg("value"),
             "Set a variable of a form. Raises UnknownName, TypeError as call, and Failure for a\n"
             "value that the variable does not take.")
        .def_property_readonly(
            "session", [](BenchHolder self) { return SessionView{std::move(self)}; },
            "The variables of the program.");
}

void bindDesk(BenchClass& bench) {
    bench
        .def("answer", answer,
             "Answers for coming boxes, in order: \"OK\", \"Cancel\", \"Yes\", \"No\". A box with "
             "one\n"
             "button takes the next one only if that names its button. Raises ValueError for any\n"
             "other text, TypeError for what is none.")
        .def_property_readonly(
            "messages",
            [](ScriptBench& self) { return look(self, [&] { return messagesOf(self); }); },
            "The boxes shown so far.")
        .def("answer_file", answerFile,
             "Answers for coming file dialogs, in order: a file name, or None for Cancel. Raises\n"
             "TypeError for anything else.")
        .def_property_readonly(
            "file_dialogs",
            [](ScriptBench& self) { return look(self, [&] { return fileDialogsOf(self); }); },
            "The file dialogs shown so far.")
        .def(
            "run_for",
            [](ScriptBench& self, double milliseconds) {
                const double duration = checkedDuration(milliseconds);
                act(self, [&] { self.runFor(duration); });
            },
            py::arg("ms"),
            "Let so many milliseconds pass, 0 to 1e12: timers fire, and actions of at() run. "
            "Raises\n"
            "ValueError outside the range, and what an action raises.")
        .def_property_readonly(
            "clock_ms",
            [](ScriptBench& self) { return look(self, [&] { return self.milliseconds(); }); },
            "Milliseconds on the clock of the bench.")
        .def(
            "at", at, py::arg("ms"), py::arg("action"),
            "Call action in so many milliseconds, 0 to 1e12, also within a call that blocks. What\n"
            "it raises comes out of that call. Raises ValueError outside the range.");
}

void bindFiles(BenchClass& bench) {
    bench
        .def(
            "open",
            [](ScriptBench& self, const std::string& name) { act(self, [&] { self.open(name); }); },
            py::arg("file_name"),
            "Open a configuration file. Raises FileFailure, or Failure with the line that is\n"
            "damaged, when it was not read whole.")
        .def(
            "save",
            [](ScriptBench& self, const std::string& name) { act(self, [&] { self.save(name); }); },
            py::arg("file_name"), "Save the configuration. Raises FileFailure when it cannot.")
        .def(
            "vcd",
            [](ScriptBench& self, const std::string& name) {
                look(self, [&] { self.program().saveVcd(name); });
            },
            py::arg("file_name"),
            "Save the waveform of the last words, as many as 16 MB hold, as a value change dump.\n"
            "Raises FileFailure when it cannot.")
        .def(
            "sr",
            [](ScriptBench& self, const std::string& name) {
                look(self, [&] { self.program().saveSr(name); });
            },
            py::arg("file_name"), "Save it as a sigrok session. Raises FileFailure when it cannot.")
        .def(
            "journal",
            [](ScriptBench& self, const std::string& name) {
                look(self, [&] { self.program().journal().start(name); });
            },
            py::arg("file_name"),
            "From now on record every word with its answer, as it comes, for \"bitlux replay\".\n"
            "Ends an earlier recording. Raises FileFailure when the file cannot be written.")
        .def(
            "end_journal", [](ScriptBench& self) { look(self, [&] { self.endJournal(); }); },
            "Record no more; harmless when nothing is recorded. Raises FileFailure when the file\n"
            "could take no more before, where the recording ended by itself.");
}

void bindEnd(BenchClass& bench) {
    bench.def("__enter__", [](BenchHolder self) { return self; })
        .def("__exit__", [](ScriptBench& self,
                            const py::args&) { actAnyway(self, [&] { self.program().end(); }); })
        .def(
            "close", [](ScriptBench& self) { actAnyway(self, [&] { self.program().close(); }); },
            "The close box of the main window, with its question when something is unsaved: "
            "raises\n"
            "UnansweredBox when nobody answers that. Harmless when repeated. A bench that is "
            "closed\n"
            "leaves its pins at rest and its dongle free; what would drive them raises Failure.")
        .def_property_readonly(
            "running",
            [](ScriptBench& self) { return look(self, [&] { return self.program().running(); }); },
            "Whether the program has not ended.");
}

} // namespace

void bindBench(py::module_& module) {
    bindMessages(module);
    bindSession(module);
    bindVirtualBench(module);
    BenchClass bench(
        module, "Bench",
        "The program without its window, on the virtual bench or on hardware.\n\n"
        R"(With bus="dongle" or bus="port" it is ready to send in hexadecimal; without, it is )"
        "as\n"
        "the program starts on what the bench offers: ports, a dongle, a command line (the name "
        "of\n"
        "a configuration file), marker files. answers are those of boxes during the start.\n"
        "Time is virtual and passes only while something waits, or clock=\"real\".\n\n"
        "The settings stay in the session until something changes them. A bench ends with its\n"
        "with block, with close(), or when nobody has it any more. On hardware other threads run\n"
        "while a call lasts; a second call into the same bench waits for the first.");
    bindStart(bench);
    bindForms(bench);
    bindDesk(bench);
    bindTransfers(bench);
    bindChipsOfBench(bench);
    bindFiles(bench);
    bindEnd(bench);
    bench.def_property_readonly("bench", virtualBench, py::return_value_policy::reference_internal,
                                "The virtual bench. Raises Failure on hardware.");
}

} // namespace bitlux::python
