#include "platform/forms/controls.h"
#include "platform/forms/form_set.h"
#include "python/bindings.h"

#include <optional>
#include <utility>
#include <vector>

#include <pybind11/stl.h>

namespace bitlux::python {

namespace {

template <typename Kind>
Kind* as(const ControlHandle& handle) {
    return dynamic_cast<Kind*>(&handle.control());
}

[[noreturn]] void refuse(const ControlHandle& handle, const char* what) {
    throw py::attribute_error(handle.name() + " has no " + what + " that a user could set");
}

std::optional<std::string> captionOf(const ControlHandle& handle) {
    const auto* captioned = as<forms::Captioned>(handle);
    return captioned == nullptr ? std::nullopt : std::optional(captioned->caption());
}

std::optional<std::string> textOf(const ControlHandle& handle) {
    if (const auto* box = as<forms::TextBox>(handle))
        return box->text();
    if (const auto* combo = as<forms::ComboBox>(handle))
        return combo->text();
    if (const auto* list = as<forms::ListBox>(handle))
        return list->listIndex() < 0 ? "" : list->line(static_cast<std::size_t>(list->listIndex()));
    return captionOf(handle);
}

void setText(const ControlHandle& handle, const std::string& text) {
    act(handle.bench(), [&] {
        if (auto* box = as<forms::TextBox>(handle))
            box->edit(text);
        else if (auto* combo = as<forms::ComboBox>(handle))
            combo->edit(text);
        else
            refuse(handle, "text");
    });
}

py::object valueOf(const ControlHandle& handle) {
    if (const auto* check = as<forms::CheckBox>(handle))
        return py::int_(check->value());
    if (const auto* option = as<forms::OptionButton>(handle))
        return py::bool_(option->value());
    if (const auto* bar = as<forms::ScrollBar>(handle))
        return py::int_(bar->value());
    if (const auto* tabs = as<forms::TabStrip>(handle))
        return py::int_(tabs->selected());
    return py::none();
}

void setValue(const ControlHandle& handle, int value) {
    act(handle.bench(), [&] {
        if (auto* check = as<forms::CheckBox>(handle)) {
            if (value != 0 && value != 1)
                throw py::value_error(handle.name() + " is 0 or 1");
            if (check->value() != value)
                check->click();
        } else if (auto* option = as<forms::OptionButton>(handle)) {
            if (value != 1)
                throw py::value_error(handle.name() + " is cleared by choosing another option");
            option->click();
        } else if (auto* bar = as<forms::ScrollBar>(handle)) {
            bar->move(value);
        } else if (auto* tabs = as<forms::TabStrip>(handle)) {
            tabs->click(value);
        } else {
            refuse(handle, "value");
        }
    });
}

py::object itemsOf(const ControlHandle& handle) {
    if (const auto* combo = as<forms::ComboBox>(handle))
        return py::cast(combo->items());
    py::list items;
    if (const auto* list = as<forms::ListBox>(handle)) {
        for (std::size_t i = 0; i < list->count(); ++i)
            items.append(list->line(i));
        return items;
    }
    if (const auto* tabs = as<forms::TabStrip>(handle)) {
        for (const forms::TabStrip::Tab& tab : tabs->tabs())
            items.append(tab.caption);
        return items;
    }
    return py::none();
}

std::optional<int> listIndexOf(const ControlHandle& handle) {
    if (const auto* combo = as<forms::ComboBox>(handle))
        return combo->listIndex();
    if (const auto* list = as<forms::ListBox>(handle))
        return list->listIndex();
    return std::nullopt;
}

void setListIndex(const ControlHandle& handle, int index) {
    act(handle.bench(), [&] {
        if (auto* combo = as<forms::ComboBox>(handle))
            combo->select(index);
        else if (auto* list = as<forms::ListBox>(handle))
            list->select(index);
        else
            refuse(handle, "list_index");
    });
}

void drag(const ControlHandle& handle, int value) {
    act(handle.bench(), [&] {
        if (auto* bar = as<forms::ScrollBar>(handle))
            bar->drag(value);
        else
            refuse(handle, "thumb");
    });
}

void dragLine(const ControlHandle& handle, int from, int to) {
    act(handle.bench(), [&] {
        if (auto* list = as<forms::ListBox>(handle))
            list->dragLine(from, to);
        else
            refuse(handle, "lines");
    });
}

const char* kindOf(const ControlHandle& handle) {
    switch (handle.control().kind()) {
    case forms::Control::Kind::Button:
        return "Button";
    case forms::Control::Kind::CheckBox:
        return "CheckBox";
    case forms::Control::Kind::ComboBox:
        return "ComboBox";
    case forms::Control::Kind::Frame:
        return "Frame";
    case forms::Control::Kind::Label:
        return "Label";
    case forms::Control::Kind::ListBox:
        return "ListBox";
    case forms::Control::Kind::MenuItem:
        return "MenuItem";
    case forms::Control::Kind::OptionButton:
        return "OptionButton";
    case forms::Control::Kind::ScrollBar:
        return "ScrollBar";
    case forms::Control::Kind::TabStrip:
        return "TabStrip";
    case forms::Control::Kind::TextBox:
        return "TextBox";
    case forms::Control::Kind::Timer:
        return "Timer";
    }
    return "";
}

/// User input on a control of any kind.
auto userInput(void (*action)(forms::Control&)) {
    return [action](const ControlHandle& handle) {
        act(handle.bench(), [&] { action(handle.control()); });
    };
}

} // namespace

ControlHandle::ControlHandle(std::shared_ptr<ScriptBench> bench, std::string name)
    : bench_(std::move(bench)), name_(std::move(name)) {
    static_cast<void>(control());
}

forms::Control& ControlHandle::control() const {
    if (control_ == nullptr || generation_ != bench_->generation()) {
        control_ =
            &act(*bench_, [&] { return std::ref(bench_->program().forms().control(name_)); }).get();
        generation_ = bench_->generation();
    }
    return *control_;
}

void bindControls(py::module_& module) {
    py::class_<ControlHandle>(
        module, "Control",
        "A control of a form. What is set or done here is user input: handlers run,\n"
        "and a control that is hidden or disabled by itself raises Unreachable.\n"
        "A property that the kind of control does not have is None.")
        .def_property_readonly("name", &ControlHandle::name, "As \"frmMain.cmdSI_single(3)\".")
        .def_property_readonly("kind", kindOf, R"("Button", "TextBox" and so on.)")
        .def("click", userInput([](forms::Control& control) { control.click(); }),
             "Click it. A tab strip is clicked on the tab it shows; set value for another. Raises\n"
             "Unreachable, and Failure when a handler fails, as do all that follow.")
        .def("double_click", userInput([](forms::Control& control) { control.doubleClick(); }),
             "Double-click it.")
        .def("focus", userInput([](forms::Control& control) { control.focus(); }),
             "Move the focus to it.")
        .def(
            "key",
            [](const ControlHandle& handle, const std::string& name) {
                const forms::Keystroke stroke = forms::keystrokeNamed(name);
                act(handle.bench(), [&] { handle.control().key(stroke); });
            },
            py::arg("name"),
            R"(Press a key, as "Enter", "Escape", "F5" or "a". Raises UnknownName for no key.)")
        .def(
            "type",
            [](const ControlHandle& handle, const std::string& text) {
                act(handle.bench(), [&] { handle.control().type(text); });
            },
            py::arg("text"), "Press the keys of a text, through the key handlers.")
        .def("drag", drag, py::arg("value"),
             "Hold the thumb of a scroll bar there; setting value lets it go. Raises Failure "
             "beyond\n"
             "its ends, AttributeError for another kind of control.")
        .def("drag_line", dragLine, py::arg("source"), py::arg("target"),
             "Drag a line of a list to the place of another, both from 0. Raises Failure where "
             "there\n"
             "is no such line, AttributeError for another kind of control.")
        .def_property_readonly("caption", captionOf, "The caption of what has one.")
        .def_property(
            "text", textOf, setText,
            "The text of a text box or combo box, the selected line of a list, else the\n"
            "caption. Setting it is what a user leaves in the box: raises Failure for what a\n"
            "list of choices does not offer, AttributeError for another kind of control.")
        .def_property(
            "value", valueOf, setValue,
            "0 or 1 of a check box, True or False of an option, the number of a scroll\n"
            "bar, the tab, from 1, of a tab strip. Setting it raises ValueError for another\n"
            "value of a box or option, Failure for a number that there is none of,\n"
            "AttributeError for another kind of control.")
        .def_property(
            "list_index", listIndexOf, setListIndex,
            "The selected item of a combo box or list from 0, -1 for none. Setting it raises\n"
            "Failure for a number that there is none of, AttributeError for another kind of\n"
            "control.")
        .def_property_readonly("items", itemsOf,
                               "The items of a combo box, lines of a list or captions of tabs.")
        .def_property_readonly(
            "visible", [](const ControlHandle& handle) { return handle.control().visible(); },
            "Its own flag, whatever page is shown.")
        .def_property_readonly(
            "enabled", [](const ControlHandle& handle) { return handle.control().enabled(); },
            "Its own flag, whatever is around it.")
        .def_property_readonly(
            "tooltip", [](const ControlHandle& handle) { return handle.control().tooltip(); },
            "The text that a pointer brings up.")
        .def_property_readonly(
            "back_color", [](const ControlHandle& handle) { return handle.control().backColor(); },
            "A number: 0xBBGGRR, or 0x80000005 of a window, 0x8000000F of a button's face.")
        .def_property_readonly(
            "marked", [](const ControlHandle& handle) { return handle.control().marked(); },
            "True for a bit of a panel that differs from a snapshot or from what was written.")
        .def("__repr__", [](const ControlHandle& handle) {
            return "<" + std::string(kindOf(handle)) + " " + handle.name() + ">";
        });
}

} // namespace bitlux::python
