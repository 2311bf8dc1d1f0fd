#pragma once

#include "python/script_chip.h"

#include <memory>

namespace bitlux::python {

using ChipHolder = std::shared_ptr<ScriptChip>;

/// A register or flags of a chip in a script.
struct RegisterHandle {
    ChipHolder chip;
    const RegisterItem* item;
};

/// Adds the class Register to the module.
void bindRegister(py::module_& module);

} // namespace bitlux::python
