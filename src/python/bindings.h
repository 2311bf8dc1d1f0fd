#pragma once

#include "python/script_bench.h"
#include "python/values.h"

#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace bitlux::python {

/// A control in the hands of a script. It is found by its name again after its form has gone.
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
void bindBench(py::module_& module);

} // namespace bitlux::python
