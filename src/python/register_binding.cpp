#include "python/register_binding.h"

#include "python/register_objects.h"
#include "registers/assignment.h"

#include <optional>
#include <string>
#include <utility>
#include <vector>

#include <fmt/format.h>
#include <pybind11/stl.h>

namespace bitlux::python {

namespace {

std::vector<FieldChange> changesFrom(const py::dict& fields) {
    std::vector<FieldChange> changes;
    for (const auto& [name, value] : fields) {
        const bool isText = PyUnicode_Check(value.ptr()) != 0;
        changes.emplace_back(py::cast<std::string>(name),
                             isText ? py::cast<std::string>(value)
                                    : fmt::format("0x{:X}", numberFrom(value)));
    }
    return changes;
}

/// Finds what is wrong with names and values before a word is sent.
void checkChanges(const RegisterItem& item, const std::vector<FieldChange>& changes) {
    std::vector<std::string> names;
    for (const NamedField& any : item.fields)
        names.push_back(any.name);
    for (const auto& [name, text] : changes) {
        if (!item.hasField(name))
            raiseUnknown(name, names);
        const NamedField& field = item.field(name, 0);
        const std::string& value = text;
        argument([&field, &value] { return field.codeFrom(value); });
    }
}

py::object readRegister(const RegisterHandle& self) {
    const std::uint64_t value = self.chip->perform(
        [&self](const RegisterAccess& access) { return access.read(*self.item); });
    return registerValueOf(*self.item, value);
}

/// A whole value or fields, as a script gives them.
struct Given {
    std::optional<std::uint64_t> whole;
    std::vector<FieldChange> changes;
};

/// Raises what is wrong with it before a word is sent.
Given givenFrom(const RegisterItem& item, const py::object& value, const py::kwargs& named) {
    const py::dict& fields = named;
    std::optional<std::uint64_t> whole;
    if (py::isinstance<py::dict>(value))
        for (const auto& [name, code] : py::cast<py::dict>(value))
            fields[name] = code;
    else if (!value.is_none())
        whole = numberFrom(value);
    if (whole && !fields.empty())
        throw py::value_error("Give a whole value or fields, not both");
    if (!whole && fields.empty())
        throw py::value_error("Give a value or fields");
    if (whole && (*whole & ~item.mask()) != 0)
        throw py::value_error(fmt::format("{} has {} bits", item.name, item.width));
    std::vector<FieldChange> changes = changesFrom(fields);
    checkChanges(item, changes);
    return {whole, std::move(changes)};
}

py::object writeRegister(const RegisterHandle& self, const py::object& value, bool fromReset,
                         bool verify, const py::kwargs& named) {
    const RegisterItem& item = *self.item;
    const Given given = givenFrom(item, value, named);
    const auto base = fromReset ? RegisterAccess::Base::Reset : RegisterAccess::Base::Chip;
    std::vector<RegisterAccess::Mismatch> mismatches;
    const std::uint64_t written = self.chip->perform([&](const RegisterAccess& access) {
        const std::uint64_t all =
            given.whole ? *given.whole : access.changed(item, given.changes, base);
        access.write(item, all);
        if (verify)
            mismatches = access.verified(item, all);
        return all;
    });
    demandTaken(mismatches);
    return registerValueOf(item, written);
}

py::object waitForRegister(const RegisterHandle& self, const py::object& value, double within,
                           const py::kwargs& named) {
    const RegisterItem& item = *self.item;
    const Given given = givenFrom(item, value, named);
    const Assignment wanted{&item, given.changes, given.whole};
    ScriptBench& bench = self.chip->bench();
    const double end = bench.milliseconds() + millisecondsFrom(within);
    for (;;) {
        const std::uint64_t now =
            self.chip->perform([&item](const RegisterAccess& access) { return access.read(item); });
        const std::string unmet = wanted.unmetIn(now);
        if (unmet.empty())
            return registerValueOf(item, now);
        if (bench.milliseconds() >= end)
            raiseMismatch(fmt::format("{}: {}, after {} s", item.name, unmet, within), py::list());
        act(bench, [&bench] { bench.runFor(pauseBetweenAttempts); });
    }
}

const char* accessOf(const RegisterItem& item) {
    if (!item.writable())
        return item.clears() ? "read clears" : "read only";
    if (!item.readable())
        return "write only";
    return item.owner->access == chips::Access::WriteOneClears ? "write one clears" : "read write";
}

} // namespace

void bindRegister(py::module_& module) {
    py::class_<RegisterHandle>(module, "Register", "A register of a chip, or flags, by name.")
        .def_property_readonly(
            "name", [](const RegisterHandle& self) { return self.item->name; }, "Its name.")
        .def_property_readonly(
            "address", [](const RegisterHandle& self) { return self.item->owner->address; },
            "Its address in a word.")
        .def_property_readonly(
            "bits", [](const RegisterHandle& self) { return self.item->width; },
            "How many bits it has.")
        .def_property_readonly(
            "reset",
            [](const RegisterHandle& self) {
                return registerValueOf(*self.item, self.item->reset());
            },
            "Its value after a reset.")
        .def_property_readonly(
            "access", [](const RegisterHandle& self) { return accessOf(*self.item); },
            "\"read write\", \"read only\", \"write only\", \"read clears\" or \"write one "
            "clears\".")
        .def_property_readonly(
            "fields",
            [](const RegisterHandle& self) {
                std::vector<std::string> names;
                for (const NamedField& any : self.item->fields)
                    names.push_back(any.name);
                return names;
            },
            "The names of its fields, from the highest bit down.")
        .def("wait_for", waitForRegister, py::arg("value") = py::none(), py::kw_only(),
             py::arg("within") = 1.0,
             "Read it until it has the value, or its fields have theirs: "
             "wait_for(STATE=\"Normal\",\n"
             "within=0.5), in seconds. Returns the value; raises Mismatch when time is up, and as\n"
             "read and write.")
        .def("read", readRegister,
             "Read it: one word, two where the chip answers with the next word. Raises Failure\n"
             "for a register that no word reads, LinkFailed or PortUnusable without an answer.")
        .def(
            "write", writeRegister, py::arg("value") = py::none(), py::kw_only(),
            py::arg("from_reset") = false, py::arg("verify") = false,
            "Write the whole value, or change fields: write(WD_spi=1), write({\"VAUX 3/5\":\n"
            "\"VAUX = 5V\"}) with numbers or texts. The register is read first and the other\n"
            "fields stay; with from_reset they get their reset values. Returns the value written.\n"
            "With verify it is read back; raises Mismatch where it did not take. Raises\n"
            "UnknownName, ValueError for a value that a field does not have, Failure for a "
            "register\n"
            "that cannot be read or written, LinkFailed or PortUnusable without an answer.");
}

} // namespace bitlux::python
