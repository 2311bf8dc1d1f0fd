#pragma once

#include "python/script_chip.h"

#include <cstdint>
#include <string>
#include <vector>

namespace bitlux::python {

// Values of registers as objects of the module, and the reverse.

/// A class of register_values.py.
py::object classNamed(const char* name);

/// A RegisterValue.
py::object registerValueOf(const RegisterItem& item, std::uint64_t value);

/// A dict of RegisterValue by name.
py::dict valuesOf(const RegisterCatalog& catalog, const RegisterSnapshot& snapshot);

/// A Difference.
py::object differenceOf(const SnapshotDifference& difference);

/// Raises TypeError for anything but an int, ValueError for one that 64 bits cannot hold.
std::uint64_t numberFrom(const py::handle& value);

/// A snapshot from a dict of values by name, or from the name of a file. Raises ValueError for a
/// dict that does not fit the chip, FileFailure for such a file.
RegisterSnapshot snapshotFrom(const ScriptChip& chip, const py::object& given);

/// Raises UnknownName, with similar names.
[[noreturn]] void raiseUnknown(const std::string& wanted, const std::vector<std::string>& names);

/// Raises Mismatch unless all writes took.
void demandTaken(const std::vector<RegisterAccess::Mismatch>& mismatches);

} // namespace bitlux::python
