#include "python/register_objects.h"

#include "platform/forms/near_names.h"

#include <optional>

#include <fmt/format.h>
#include <fmt/ranges.h>
#include <pybind11/stl.h>

namespace bitlux::python {

py::object classNamed(const char* name) {
    return py::module_::import("bitlux").attr(name);
}

py::object registerValueOf(const RegisterItem& item, std::uint64_t value) {
    py::list fields;
    for (const NamedField& any : item.fields)
        if (any.appliesTo(value)) {
            const std::uint64_t code = any.bits.taken(value);
            fields.append(
                py::make_tuple(any.name, code, std::string(any.textOf(code)), any.bits.text()));
        }
    return classNamed("RegisterValue")(value, item.name, item.hexOf(0).size(), fields);
}

py::dict valuesOf(const RegisterCatalog& catalog, const RegisterSnapshot& snapshot) {
    py::dict values;
    for (const auto& [name, value] : snapshot.values)
        values[py::str(name)] = registerValueOf(catalog.item(name), value);
    return values;
}

py::object differenceOf(const SnapshotDifference& difference) {
    const auto value = [&difference](const std::optional<std::uint64_t>& known) -> py::object {
        return known ? registerValueOf(*difference.item, *known) : py::none();
    };
    return classNamed("Difference")(difference.item->name, value(difference.before),
                                    value(difference.after));
}

std::uint64_t numberFrom(const py::handle& value) {
    if (!PyLong_Check(value.ptr()))
        throw py::type_error("A value is an int");
    const std::uint64_t number = PyLong_AsUnsignedLongLong(value.ptr());
    if (PyErr_Occurred() != nullptr) {
        PyErr_Clear();
        throw py::value_error("A value is 0 or more and has up to 64 bits");
    }
    return number;
}

RegisterSnapshot snapshotFrom(const ScriptChip& chip, const py::object& given) {
    const RegisterCatalog& catalog = chip.catalog();
    if (!py::isinstance<py::dict>(given)) {
        const std::string file = py::cast<std::string>(py::str(given));
        return fitted(catalog, readSnapshot(file), file);
    }
    RegisterSnapshot snapshot{.chip = catalog.chip().name, .values = {}};
    for (const auto& [name, value] : py::cast<py::dict>(given))
        snapshot.values.push_back({py::cast<std::string>(name), numberFrom(value)});
    return argument([&] { return fitted(catalog, snapshot, "snapshot"); });
}

[[noreturn]] void raiseUnknown(const std::string& wanted, const std::vector<std::string>& names) {
    throw forms::UnknownName(wanted, forms::nearNames(wanted, names));
}

void demandTaken(const std::vector<RegisterAccess::Mismatch>& mismatches) {
    if (mismatches.empty())
        return;
    py::list differences;
    std::vector<std::string> lines;
    for (const RegisterAccess::Mismatch& any : mismatches) {
        differences.append(differenceOf({any.item, any.written, any.read}));
        lines.push_back(py::cast<std::string>(py::str(differences[lines.size()])));
    }
    raiseMismatch(fmt::format("Written, and read back otherwise: {}", fmt::join(lines, "; ")),
                  differences);
}

} // namespace bitlux::python
