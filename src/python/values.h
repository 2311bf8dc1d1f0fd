#pragma once

#include "bench/device.h"
#include "platform/desk.h"
#include "platform/forms/value.h"
#include "session/session_variables.h"

#include <cstdint>
#include <string>
#include <vector>

#include <pybind11/pybind11.h>

namespace bitlux::python {

namespace py = pybind11;

/// An exception that a script raised within a call of the program. It is no std::exception, so that
/// no handler takes it for a failure of its own.
struct ScriptError {
    py::error_already_set error;
};

py::object toPython(const forms::Value& value);
/// Raises TypeError for anything but None, bool, int, float and str.
forms::Value fromPython(const py::handle& value);

py::object toPython(const VariablePlace& place);
/// Raises TypeError, ValueError, and AttributeError for read-only properties.
void assign(const VariablePlace& place, const std::string& name, const py::handle& value);

/// The bits of a number that is not negative; element i is bit i. Raises ValueError for others.
std::vector<std::int16_t> bitsOf(const py::int_& number);
py::int_ numberOf(const std::vector<std::int16_t>& bits);
Reply replyOf(const py::int_& number);
py::int_ numberOf(const Reply& reply);

const char* nameOf(MessageBox::Answer answer);
/// Raises ValueError for a text that names no button.
MessageBox::Answer answerFrom(const std::string& name);

} // namespace bitlux::python
