#include "chips/chip_library.h"
#include "platform/forms/near_names.h"
#include "python/register_binding.h"
#include "python/register_objects.h"
#include "registers/names.h"

#include <algorithm>
#include <array>
#include <memory>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include <fmt/format.h>
#include <pybind11/eval.h>
#include <pybind11/stl.h>

namespace bitlux::python {

/// The text of register_values.py.
extern const char* const registerValues;

namespace {

const RegisterItem& itemOf(const ScriptChip& chip, const std::string& name) {
    if (const RegisterItem* found = chip.catalog().find(name))
        return *found;
    raiseUnknown(name, chip.catalog().names());
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
        const std::string meaning = decoder.answerText(meant, *received);
        text += meaning.empty() ? "" : " -> " + meaning;
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
