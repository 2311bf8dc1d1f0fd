#include "python/bindings.h"

#include <cstddef>
#include <optional>
#include <string>
#include <vector>

#include <pybind11/stl.h>

namespace bitlux::python {

namespace {

py::tuple buttonsOf(const Message& message) {
    switch (message.box.buttons) {
    case MessageBox::Buttons::OkCancel:
        return py::make_tuple("OK", "Cancel");
    case MessageBox::Buttons::YesNo:
        return py::make_tuple("Yes", "No");
    case MessageBox::Buttons::Ok:
        break;
    }
    return py::make_tuple("OK");
}

std::optional<std::string> iconOf(const Message& message) {
    switch (message.box.icon) {
    case MessageBox::Icon::Question:
        return "Question";
    case MessageBox::Icon::Exclamation:
        return "Exclamation";
    case MessageBox::Icon::Information:
        return "Information";
    case MessageBox::Icon::None:
        break;
    }
    return std::nullopt;
}

} // namespace

std::vector<Message> messagesOf(ScriptBench& bench) {
    std::vector<Message> messages;
    for (std::size_t i = 0; i < bench.boxes().shown().size(); ++i)
        messages.push_back({bench.boxes().shown()[i], bench.boxes().answered()[i]});
    return messages;
}

std::vector<AskedFile> fileDialogsOf(ScriptBench& bench) {
    std::vector<AskedFile> dialogs;
    for (std::size_t i = 0; i < bench.fileDialogs().shown().size(); ++i)
        dialogs.push_back({bench.fileDialogs().shown()[i], bench.fileDialogs().answered()[i]});
    return dialogs;
}

void bindMessages(py::module_& module) {
    py::class_<Message>(module, "Message", "A message box that was shown.")
        .def_property_readonly(
            "text", [](const Message& self) { return self.box.text; },
            "Its lines are joined by \\r\\n.")
        .def_property_readonly(
            "title", [](const Message& self) { return self.box.title; }, "The title of the box.")
        .def_property_readonly(
            "place", [](const Message& self) { return self.box.place; },
            R"(The handler that failed, as "frmMain.cmdSendOnce_Click"; empty when none did.)")
        .def_property_readonly("buttons", buttonsOf, R"(As ("Yes", "No").)")
        .def_property_readonly("icon", iconOf,
                               R"("Question", "Exclamation", "Information" or None.)")
        .def_property_readonly(
            "answer",
            [](const Message& self) -> std::optional<std::string> {
                return self.answer ? std::optional<std::string>(nameOf(*self.answer))
                                   : std::nullopt;
            },
            "The button that was pressed; None when nobody answered.")
        .def("__repr__", [](const Message& self) {
            return fmt::format("<Message {}>",
                               py::cast<std::string>(py::repr(py::str(self.box.text))));
        });
    py::class_<AskedFile>(module, "FileDialog", "A file dialog that was shown.")
        .def_property_readonly(
            "kind",
            [](const AskedFile& self) {
                return self.dialog.kind == FileDialog::Kind::Open ? "Open" : "Save";
            },
            R"("Open" or "Save".)")
        .def_property_readonly(
            "title", [](const AskedFile& self) { return self.dialog.title; },
            "The title of the dialog.")
        .def_property_readonly(
            "filter", [](const AskedFile& self) { return self.dialog.filter; },
            "Pairs of text and pattern, joined by |.")
        .def_property_readonly(
            "file_name", [](const AskedFile& self) { return self.dialog.fileName; },
            "The name that the dialog started on.")
        .def_property_readonly(
            "answer", [](const AskedFile& self) { return self.answer; },
            "The name that was chosen; None for Cancel.");
}

} // namespace bitlux::python
