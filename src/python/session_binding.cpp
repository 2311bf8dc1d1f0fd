#include "platform/forms/near_names.h"
#include "python/bindings.h"

#include <algorithm>
#include <string>
#include <vector>

#include <pybind11/stl.h>

namespace bitlux::python {

namespace {

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

} // namespace

void bindSession(py::module_& module) {
    py::class_<SessionView>(
        module, "Session",
        "The variables of the program by name. Lists are copies: assign a whole one.\n"
        "An unknown name raises UnknownName; assigning raises TypeError for another kind of "
        "value,\n"
        "ValueError outside the variable's range, AttributeError where it can only be read.")
        .def("__getattr__",
             [](const SessionView& self, const std::string& name) {
                 return look(*self.bench, [&] {
                     return toPython(variableNamed(name).place(self.bench->program().session()));
                 });
             })
        .def("__setattr__",
             [](const SessionView& self, const std::string& name, const py::object& value) {
                 look(*self.bench, [&] {
                     assign(variableNamed(name).place(self.bench->program().session()), name,
                            value);
                 });
             })
        .def("__dir__", [](const SessionView&) {
            std::vector<std::string> names;
            for (const SessionVariable& variable : sessionVariables())
                names.emplace_back(variable.name);
            return names;
        });
}

} // namespace bitlux::python
