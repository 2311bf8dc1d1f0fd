#pragma once

#include "platform/failure.h"
#include "platform/forms/unknown_name.h"
#include "python/script_bench.h"
#include "python/values.h"

#include <memory>
#include <optional>
#include <string>
#include <utility>
#include <vector>

namespace bitlux::python {

/// Lets other Python threads run while it exists; harmless where they already may.
class WithoutGil {
public:
    WithoutGil() {
        if (PyGILState_Check() == 1)
            released_.emplace();
    }

private:
    std::optional<py::gil_scoped_release> released_;
};

/// A call of a script is inside a bench. A call from another thread waits until it has left,
/// without the interpreter lock, and signals are handled meanwhile.
class InBench {
public:
    explicit InBench(ScriptBench& bench);
    ~InBench() { lock_.leave(); }
    InBench(const InBench&) = delete;
    InBench& operator=(const InBench&) = delete;

private:
    BenchLock& lock_;
};

/// Reads something of a bench, which may be closed.
template <typename Action>
auto look(ScriptBench& bench, Action&& action) {
    const InBench inside(bench);
    return std::forward<Action>(action)();
}

/// Acts on a bench, which may be closed. On hardware other threads run meanwhile, so `action` must
/// not use Python objects.
template <typename Action>
auto actAnyway(ScriptBench& bench, Action&& action) {
    const InBench inside(bench);
    std::optional<WithoutGil> others;
    if (bench.onHardware())
        others.emplace();
    return bench.act(std::forward<Action>(action));
}

/// Raises Failure for a closed bench.
void demandOpen(ScriptBench& bench);

/// Acts on a bench. Raises Failure for a closed one.
template <typename Action>
auto act(ScriptBench& bench, Action&& action) {
    return actAnyway(bench, [&] {
        demandOpen(bench);
        return action();
    });
}

/// Milliseconds that pass between two questions to a chip whose answer is waited for: timers and
/// actions of the script run, and other programs do.
inline constexpr double pauseBetweenAttempts = 1;

/// Raises Mismatch of the module.
[[noreturn]] void raiseMismatch(const std::string& text, const py::list& differences);

/// Seconds that a script gave, in milliseconds; raises ValueError below 0 and beyond 1e9.
double millisecondsFrom(double seconds);

/// Reads an argument of a script; a problem with it is a ValueError.
template <typename Action>
auto argument(Action&& action) {
    try {
        return std::forward<Action>(action)();
    } catch (const Failure& failure) {
        throw py::value_error(failure.what());
    }
}

/// The Python exception for a failure.
py::object exceptionOf(const Failure& failure);

/// A control in a script. It is found again by its name after its form was destroyed.
class ControlHandle {
public:
    /// Raises UnknownName.
    ControlHandle(std::shared_ptr<ScriptBench> bench, std::string name);

    [[nodiscard]] const std::string& name() const { return name_; }
    [[nodiscard]] forms::Control& control() const;
    [[nodiscard]] ScriptBench& bench() const { return *bench_; }

private:
    std::shared_ptr<ScriptBench> bench_;
    std::string name_;
    mutable forms::Control* control_ = nullptr;
    mutable int generation_ = -1;
};

/// A box that was shown.
struct Message {
    MessageBox box;
    std::optional<MessageBox::Answer> answer;
};

/// A file dialog that was shown.
struct AskedFile {
    FileDialog dialog;
    std::optional<std::string> answer;
};

std::vector<Message> messagesOf(ScriptBench& bench);
std::vector<AskedFile> fileDialogsOf(ScriptBench& bench);

void bindControls(py::module_& module);
void bindMessages(py::module_& module);
void bindVirtualBench(py::module_& module);
void bindSession(py::module_& module);
void bindChips(py::module_& module);
void bindBench(py::module_& module);

using BenchHolder = std::shared_ptr<ScriptBench>;
using BenchClass = py::class_<ScriptBench, BenchHolder>;

// Parts of the class Bench.
void bindStart(BenchClass& bench);
void bindTransfers(BenchClass& bench);
void bindChipsOfBench(BenchClass& bench);

/// The variables of a bench's program.
struct SessionView {
    BenchHolder bench;
};

} // namespace bitlux::python
