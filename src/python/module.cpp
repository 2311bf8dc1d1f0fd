// The Python module bitlux.

#include "platform/failure.h"
#include "platform/forms/form_set.h"
#include "program/version.h"
#include "python/bindings.h"

#include <chrono>
#include <exception>
#include <stdexcept>
#include <string>
#include <utility>

#include <fmt/format.h>

namespace bitlux::python {

namespace {

/// The exceptions of the module; they exist as long as the interpreter.
struct Exceptions {
    PyObject* failure;
    PyObject* linkFailed;
    PyObject* portUnusable;
    PyObject* fileFailure;
    PyObject* unreachable;
    PyObject* unansweredBox;
    PyObject* unknownName;
    PyObject* mismatch;
};

PyObject* makeException(py::module_& module, const char* name, const char* documentation,
                        const py::object& bases) {
    PyObject* made = PyErr_NewExceptionWithDoc((std::string("bitlux.") + name).c_str(),
                                               documentation, bases.ptr(), nullptr);
    if (made == nullptr)
        throw py::error_already_set();
    module.add_object(name, made);
    return made;
}

Exceptions exceptions{};

void raise(PyObject* exception, const std::string& text) {
    PyErr_SetString(exception, text.c_str());
}

PyObject* classOf(Failure::Kind kind) {
    switch (kind) {
    case Failure::Kind::LinkFailed:
        return exceptions.linkFailed;
    case Failure::Kind::PortUnusable:
        return exceptions.portUnusable;
    case Failure::Kind::File:
        return exceptions.fileFailure;
    default:
        return exceptions.failure;
    }
}

void translate(std::exception_ptr thrown) {
    try {
        std::rethrow_exception(std::move(thrown));
    } catch (ScriptError& raised) {
        raised.error.restore();
    } catch (const UnansweredBox& unanswered) {
        raise(exceptions.unansweredBox, R"(Nobody answers the box ")" + unanswered.box.title +
                                            R"(": )" + unanswered.box.text);
    } catch (const Failure& failure) {
        raise(classOf(failure.kind()), failure.what());
    } catch (const forms::UnknownName& unknown) {
        raise(exceptions.unknownName, unknown.what());
    } catch (const forms::Unreachable& unreachable) {
        raise(exceptions.unreachable, unreachable.what());
    } catch (const std::out_of_range&) {
        raise(exceptions.failure, "Subscript out of range");
    }
}

void makeExceptions(py::module_& module) {
    const py::module_ builtins = py::module_::import("builtins");
    const py::object runtimeError = builtins.attr("RuntimeError");
    exceptions.failure = makeException(
        module, "Failure", "The program failed; the text is its own. Also: the bench is closed.",
        runtimeError);
    const py::object failure = module.attr("Failure");
    exceptions.linkFailed = makeException(
        module, "LinkFailed",
        "The dongle is not there, was lost, or does not answer. From transfer_many it has the\n"
        "answers that had come as answers.",
        failure);
    exceptions.portUnusable = makeException(
        module, "PortUnusable",
        "There is no parallel port, it cannot be opened, or it was lost; as LinkFailed is.",
        failure);
    exceptions.fileFailure = makeException(
        module, "FileFailure", "A file cannot be read or written; the text names it.", failure);
    exceptions.mismatch = makeException(
        module, "Mismatch",
        "An answer or a register is not what it was to be; differences lists registers that "
        "differ.",
        failure);
    exceptions.unreachable =
        makeException(module, "Unreachable",
                      "A hand reached for a control that is hidden or disabled.", runtimeError);
    exceptions.unansweredBox = makeException(
        module, "UnansweredBox",
        "A box with several buttons was shown and no answer was left for it.", runtimeError);
    exceptions.unknownName = makeException(
        module, "UnknownName",
        "A name that no form, control, procedure or variable bears; the text has near ones.",
        py::make_tuple(builtins.attr("KeyError"), builtins.attr("AttributeError")));
    py::register_exception_translator(translate);
}

} // namespace

py::object exceptionOf(const Failure& failure) {
    return py::reinterpret_borrow<py::object>(classOf(failure.kind()))(failure.what());
}

void raiseMismatch(const std::string& text, const py::list& differences) {
    const py::object raised = py::reinterpret_borrow<py::object>(exceptions.mismatch)(text);
    raised.attr("differences") = differences;
    PyErr_SetObject(exceptions.mismatch, raised.ptr());
    throw py::error_already_set();
}

double millisecondsFrom(double seconds) {
    constexpr double longest = 1e9;
    constexpr double millisecondsOfSecond = 1000;
    if (!(seconds >= 0 && seconds <= longest))
        throw py::value_error("A time is 0 to 1e9 seconds");
    return seconds * millisecondsOfSecond;
}

void demandOpen(ScriptBench& bench) {
    if (!bench.program().running())
        throw Failure(Failure::Kind::OutOfRange, "The bench is closed");
}

InBench::InBench(ScriptBench& bench) : lock_(bench.lock()) {
    using namespace std::chrono_literals;
    if (lock_.enter(0ms))
        return;
    for (;;) {
        {
            const WithoutGil others;
            if (lock_.enter(50ms))
                return;
        }
        if (PyErr_CheckSignals() != 0)
            throw ScriptError{py::error_already_set()};
    }
}

} // namespace bitlux::python

PYBIND11_MODULE(bitlux, module) {
    using namespace bitlux::python;
    module.doc() = "Bitlux Forge without its window: the program, its forms by their names.\n\n"
                   "    b = bitlux.Bench(device=\"loopback\", bus=\"dongle\")\n"
                   "    b[\"frmMain.txtHexWordToSend\"].text = \"A5\"\n"
                   "    b[\"frmMain.cmdSendOnce\"].click()\n"
                   R"(    print(b["frmMain.lblHexWordReceived"].caption))";
    module.attr("__version__") = bitlux::programVersion;
    makeExceptions(module);
    bindControls(module);
    bindChips(module);
    bindBench(module);
}
