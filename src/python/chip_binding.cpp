#include "chips/chip_library.h"
#include "platform/forms/near_names.h"
#include "python/bindings.h"
#include "python/script_chip.h"
#include "registers/names.h"

#include <algorithm>
#include <memory>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include <fmt/format.h>
#include <fmt/ranges.h>
#include <pybind11/eval.h>
#include <pybind11/stl.h>

namespace bitlux::python {

/// The text of register_values.py.
extern const char* const registerValues;

namespace {

using ChipHolder = std::shared_ptr<ScriptChip>;

/// A register or flags of a chip in the hands of a script.
struct RegisterHandle {
    ChipHolder chip;
    const RegisterItem* item;
};

/// Classes of register_values.py.
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

/// Raises ValueError for anything but a whole number from 0 to 64 bits.
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

/// A dict of values by name, or the name of a file.
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

const RegisterItem& itemOf(const ScriptChip& chip, const std::string& name) {
    if (const RegisterItem* found = chip.catalog().find(name))
        return *found;
    raiseUnknown(name, chip.catalog().names());
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

py::dict dump(const ScriptChip& self, bool all) {
    return valuesOf(self.catalog(),
                    self.perform([all](const RegisterAccess& access) { return access.dump(all); }));
}

py::list diff(const ScriptChip& self, const py::object& before, const py::object& after) {
    const RegisterSnapshot old = snapshotFrom(self, before);
    const RegisterSnapshot now =
        after.is_none()
            ? self.perform([&old](const RegisterAccess& access) { return access.now(old); })
            : snapshotFrom(self, after);
    py::list result;
    for (const SnapshotDifference& any : differences(self.catalog(), old, now))
        result.append(differenceOf(any));
    return result;
}

std::vector<std::string> load(const ScriptChip& self, const py::object& wanted, bool verify) {
    const RegisterSnapshot snapshot = snapshotFrom(self, wanted);
    const RegisterAccess::Loaded loaded =
        self.perform([&](const RegisterAccess& access) { return access.load(snapshot, verify); });
    demandTaken(loaded.mismatches);
    std::vector<std::string> names;
    for (const RegisterItem* item : loaded.written)
        names.push_back(item->name);
    return names;
}

py::object decode(const ScriptChip& self, const py::object& word, const py::object& answer) {
    const std::uint64_t sent = numberFrom(word);
    const chips::WordFormat& format = self.catalog().chip().word;
    std::optional<std::uint64_t> received;
    if (!answer.is_none())
        received = numberFrom(answer);
    if (((sent | received.value_or(0)) & ~format.mask()) != 0)
        throw py::value_error(fmt::format("A word of this chip has {} bits", format.bits));
    const WordDecoder& decoder = self.decoder();
    const DecodedWord meant = decoder.decode(sent);
    static constexpr std::array kinds{"unknown", "write", "read", "command"};
    std::string name;
    py::object value = py::none();
    std::string text = meant.text();
    std::string status;
    if (meant.item != nullptr)
        name = meant.item->name;
    else if (meant.command != nullptr)
        name = meant.title();
    if (meant.kind == DecodedWord::Kind::Write)
        value = registerValueOf(*meant.item, meant.value);
    if (received) {
        status = decoder.statusIn(meant, *received);
        if (const auto read = decoder.valueIn(meant, *received))
            value = registerValueOf(*meant.item, *read);
        const std::string answer = decoder.answerText(meant, *received);
        text += answer.empty() ? "" : " -> " + answer;
    }
    return classNamed("DecodedWord")(kinds.at(static_cast<std::size_t>(meant.kind)), name, value,
                                     status, text);
}

void bindChip(py::module_& module) {
    py::class_<ScriptChip, ChipHolder>(
        module, "Chip",
        "The registers of a chip by name: chip[\"INIT\"]. Names count without case, blanks and\n"
        "underscores count alike. Snapshots are dicts of values by name, or names of files.")
        .def_property_readonly(
            "name", [](const ScriptChip& self) { return self.catalog().chip().name; }, "Its name.")
        .def_property_readonly(
            "title", [](const ScriptChip& self) { return self.catalog().chip().title; },
            "Its title for people.")
        .def_property_readonly(
            "bits", [](const ScriptChip& self) { return self.catalog().chip().word.bits; },
            "How many bits its words have.")
        .def_property_readonly(
            "names", [](const ScriptChip& self) { return self.catalog().names(); },
            "The names of its registers and flags, in the order of its file.")
        .def(
            "__getitem__",
            [](const ChipHolder& self, const std::string& name) {
                return RegisterHandle{self, &itemOf(*self, name)};
            },
            py::arg("name"), "A register or flags. Raises UnknownName, with near names.")
        .def("dump", dump, py::arg("all") = false,
             "Read all registers that a read does not clear, or all; returns a dict of values.\n"
             "Raises LinkFailed or PortUnusable without an answer.")
        .def(
            "diff", diff, py::arg("before"), py::arg("after") = py::none(),
            "The registers that differ between two snapshots, or between one and the chip now, as\n"
            "a list of Difference. Raises FileFailure for a file that is no snapshot of this "
            "chip,\n"
            "ValueError for such a dict.")
        .def("load", load, py::arg("snapshot"), py::arg("verify") = false,
             "Write the registers whose values in the chip differ from a snapshot, and those that\n"
             "cannot be read, but none that is volatile; returns their names. With verify each is "
             "read back where that is\n"
             "harmless; raises Mismatch with all that did not take as its differences.")
        .def(
            "save_snapshot",
            [](const ScriptChip& self, const std::string& file, const py::object& snapshot) {
                saveSnapshot(self.catalog(), snapshotFrom(self, snapshot), file);
            },
            py::arg("file_name"), py::arg("snapshot"),
            "Save a snapshot as \"bitlux chip dump\" does. Raises FileFailure.")
        .def(
            "read_snapshot",
            [](const ScriptChip& self, const std::string& file) {
                return valuesOf(self.catalog(), fitted(self.catalog(), readSnapshot(file), file));
            },
            py::arg("file_name"), "Read such a file; returns a dict of values. Raises FileFailure.")
        .def("decode", decode, py::arg("word"), py::arg("answer") = py::none(),
             "What a word means to the chip, and its answer. Raises ValueError for one that has\n"
             "more bits than the chip's words.");
}

/// Makes the classes of register_values.py in the module.
void makeValueClasses(py::module_& module) {
    py::dict space;
    space["__name__"] = "bitlux";
    space["field_name"] =
        py::cpp_function([](const std::string& owner, const std::vector<std::string>& names,
                            const std::string& wanted) {
            const auto found =
                std::find_if(names.begin(), names.end(),
                             [&wanted](const std::string& any) { return isSameName(any, wanted); });
            if (found == names.end())
                throw forms::UnknownName(owner + "." + wanted, forms::nearNames(wanted, names));
            return *found;
        });
    py::exec(registerValues, space);
    for (const char* name : {"RegisterValue", "Difference", "DecodedWord", "SentWord"})
        module.attr(name) = space[name];
}

} // namespace

void bindChips(py::module_& module) {
    makeValueClasses(module);
    bindRegister(module);
    bindChip(module);
}

void bindChipsOfBench(BenchClass& bench) {
    bench.def(
        "chip",
        [](BenchHolder self, const std::string& chip) {
            return std::make_shared<ScriptChip>(std::move(self), chip);
        },
        py::arg("chip"),
        "A chip by its name, or by the path of its file (*.toml). Its words go out on the bus of\n"
        "the bench in their own length and type. Raises Failure for an unknown name, with near\n"
        "ones, FileFailure for a damaged file.");
}

} // namespace bitlux::python
