#include "python/bindings.h"

#include <algorithm>
#include <string>
#include <utility>
#include <vector>

#include <pybind11/stl.h>

namespace bitlux::python {

namespace {

py::dict pinsOf(const BenchControls& self) {
    const VirtualBench& bench = self.bench();
    return py::dict(
        py::arg("data") = bench.port.dataPins(), py::arg("control") = bench.port.controlPins(),
        py::arg("data_out") = bench.port.dataOut(), py::arg("extra") = bench.dongle.extraPins(),
        py::arg("lines") = bench.adapter.lines(), py::arg("driven") = bench.adapter.driven());
}

std::vector<py::bytes> commandRepliesOf(const BenchControls& self) {
    std::vector<py::bytes> result;
    for (const UsbFrame& frame : self.commandReplies())
        result.emplace_back(reinterpret_cast<const char*>(frame.data()), frame.size());
    return result;
}

void setCommandReplies(BenchControls& self, const std::vector<std::string>& replies) {
    std::vector<UsbFrame> frames;
    for (const std::string& reply : replies) {
        UsbFrame frame{};
        if (reply.size() != frame.size())
            throw py::value_error("A frame has 8 bytes");
        std::copy(reply.begin(), reply.end(), frame.begin());
        frames.push_back(frame);
    }
    self.setCommandReplies(std::move(frames));
}

} // namespace

void bindVirtualBench(py::module_& module) {
    py::class_<BenchControls>(module, "VirtualBench",
                              "The virtual bench: what its device answers, and what goes wrong.")
        .def_property(
            "device", &BenchControls::device,
            [](BenchControls& self, const std::string& device) {
                self.demandOpen();
                argument([&] { self.connect(device); });
            },
            "The name of the device on the lines; setting it puts another one there. Raises\n"
            "ValueError for a name that \"bitlux list\" does not print.")
        .def_property(
            "replies",
            [](const BenchControls& self) {
                std::vector<py::int_> numbers;
                for (const Reply& reply : self.replies())
                    numbers.push_back(numberOf(reply));
                return numbers;
            },
            [](BenchControls& self, const std::vector<py::int_>& numbers) {
                std::vector<Reply> replies;
                for (const py::int_& number : numbers)
                    replies.push_back(replyOf(number));
                self.setReplies(std::move(replies));
            },
            "Answers of the device \"scripted\" to the coming words, ints from 0; the last one\n"
            "stays. Raises ValueError for a negative one, and Failure when another device is "
            "there.")
        .def_property("command_replies", commandRepliesOf, setCommandReplies,
                      "Answers of the dongle to the coming commands, 8 bytes each; the last one\n"
                      "stays. With none the dongle answers by itself. Raises ValueError for any\n"
                      "other number of bytes.")
        .def_property("silent", &BenchControls::silent, &BenchControls::setSilent,
                      "The dongle takes frames and answers none. A word waits for ever then, a\n"
                      "command half a second.")
        .def_property(
            "late_ms", &BenchControls::lateMilliseconds,
            [](BenchControls& self, double milliseconds) {
                constexpr double longest = 1e9;
                if (!(milliseconds >= 0 && milliseconds <= longest))
                    throw py::value_error("late_ms is 0 to 1e9");
                self.setLateMilliseconds(milliseconds);
            },
            "By how many milliseconds the dongle's answers come too late, 0 to 1e9. Raises\n"
            "ValueError outside the range.")
        .def(
            "set_faults",
            [](BenchControls& self, const std::vector<std::string>& faults, std::uint32_t seed) {
                self.demandOpen();
                argument([&] { self.setFaults(faults, seed); });
            },
            py::arg("faults"), py::arg("seed") = 1,
            "What goes wrong with dongle or adapter from now on, as \"short:5/0.25\", "
            "\"late:700@3\":\n"
            "silent, late:MS, short:BYTES, stalled, babbling, gone, gone:MS; then @FRAME, /CHANCE\n"
            "from 0 to 1, drawn from seed; or busy: it cannot be opened. The adapter counts words "
            "as\n"
            "frames, and does not babble. Raises ValueError for any other text.")
        .def("unplug", &BenchControls::unplug, "Pull the dongle out.")
        .def("plug", &BenchControls::plug, "Plug the dongle in.")
        .def_property_readonly(
            "plugged", [](const BenchControls& self) { return self.bench().dongle.plugged(); },
            "Whether the dongle is plugged in.")
        .def("unplug_adapter", &BenchControls::unplugAdapter, "Pull the adapter out.")
        .def("plug_adapter", &BenchControls::plugAdapter, "Plug the adapter in.")
        .def_property_readonly("adapter_plugged", &BenchControls::isAdapterPlugged,
                               "Whether the adapter is plugged in.")
        .def("set_lines", &BenchControls::setLines, py::arg("interrupt") = false,
             py::arg("reset") = false,
             "The chip's interrupt and reset lines, as the dongle samples them.")
        .def_property_readonly("pins", pinsOf,
                               "Levels: \"data\" and \"control\" registers of the port,\n"
                               "\"data_out\" of the device, \"extra\" pins of the dongle, "
                               "\"lines\" of the adapter\n"
                               "with D0 as bit 0, and \"driven\", those that it drives.");
}

} // namespace bitlux::python
