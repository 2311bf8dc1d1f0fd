// Words sent without the forms, and the wire trace.

#include "python/bindings.h"
#include "sending/answer_pattern.h"
#include "waveform/waveform.h"

#include <algorithm>
#include <cstdint>
#include <deque>
#include <limits>

#include <fmt/format.h>

#include <pybind11/stl.h>

namespace bitlux::python {

namespace {

int lengthOf(ScriptBench& bench, int bits) {
    return bits != 0 ? bits : bench.program().session().SPIWordLength;
}

WordElements elementsOf(const py::handle& word, int length) {
    if (!PyLong_Check(word.ptr()))
        throw py::type_error("A word is an int");
    WordElements elements = bitsOf(py::reinterpret_borrow<py::int_>(word));
    if (length >= 0 && elements.size() > static_cast<std::size_t>(length))
        throw py::value_error(fmt::format("The word has more than {} bits", length));
    return elements;
}

py::list numbersOf(const std::vector<WordElements>& answers) {
    py::list numbers;
    for (const WordElements& answer : answers)
        numbers.append(numberOf(answer));
    return numbers;
}

/// Raises what ended a transfer, with the answers received until then.
[[noreturn]] void raiseWith(const py::object& exception, const std::vector<WordElements>& answers) {
    exception.attr("answers") = numbersOf(answers);
    PyErr_SetObject(py::type::of(exception).ptr(), exception.ptr());
    throw py::error_already_set();
}

py::list transferMany(ScriptBench& bench, const py::iterable& words, int bits, int type) {
    std::vector<WordElements> sent;
    const int length = lengthOf(bench, bits);
    for (const py::handle& word : words)
        sent.push_back(elementsOf(word, length));
    const std::size_t count = sent.size();
    std::vector<WordElements> answers;
    try {
        act(bench, [&] { bench.transfer(std::move(sent), bits, type, answers); });
    } catch (const Failure& failure) {
        if (failure.kind() == Failure::Kind::OutOfRange && bench.program().running())
            throw py::value_error(failure.what());
        const std::string place =
            count > 1 ? fmt::format("Word {} of {}: ", answers.size() + 1, count) : "";
        raiseWith(exceptionOf({failure.kind(), place + failure.what()}), answers);
    } catch (ScriptError& raised) {
        raiseWith(raised.error.value(), answers);
    }
    return numbersOf(answers);
}

py::object transfer(ScriptBench& bench, const py::object& word, int bits, int type) {
    return transferMany(bench, py::make_tuple(word), bits, type)[0];
}

/// What an engineer reads of a word whose answer never was as it was to be.
std::string mismatchText(const AnswerPattern& pattern, const WordElements& word,
                         const WordElements& answer, int attempts) {
    return fmt::format("The answer to {} is {}, not {}{}\n{}", hexText(word), hexText(answer),
                       pattern.text(),
                       attempts > 1 ? fmt::format(", after {} attempts", attempts) : "",
                       pattern.comparison(answer));
}

WordElements wholeElements(const py::handle& word, int length) {
    WordElements elements = elementsOf(word, length);
    elements.resize(static_cast<std::size_t>(length));
    return elements;
}

py::object expectAnswer(ScriptBench& bench, const py::object& word, const std::string& text,
                        double within, int retries, int bits, int type) {
    const int length = lengthOf(bench, bits);
    const AnswerPattern pattern = argument([&] { return AnswerPattern::parse(text, length); });
    const double end = bench.milliseconds() + millisecondsFrom(within);
    if (retries < 0)
        throw py::value_error("retries is 0 or more");
    for (int attempt = 1;; ++attempt) {
        py::object answer = transfer(bench, word, bits, type);
        const WordElements elements = wholeElements(answer, length);
        if (pattern.matches(elements))
            return answer;
        const bool isOver = within > 0 ? bench.milliseconds() >= end : retries == 0;
        if (isOver || (retries > 0 && attempt > retries))
            raiseMismatch(mismatchText(pattern, wholeElements(word, length), elements, attempt),
                          py::list());
        act(bench, [&] { bench.runFor(pauseBetweenAttempts); });
    }
}

py::list traceOf(ScriptBench& bench) {
    py::list result;
    for (const WireAccess& access : bench.trace().accesses()) {
        const bool out = access.kind == WireAccess::Kind::FrameOut;
        if (out || access.kind == WireAccess::Kind::FrameIn)
            result.append(py::make_tuple(
                out ? "OUT" : "IN", py::bytes(reinterpret_cast<const char*>(access.frame.data()),
                                              access.frame.size())));
        else
            result.append(py::make_tuple(access.kind == WireAccess::Kind::Write ? "W" : "R",
                                         static_cast<std::uint16_t>(access.address), access.value));
    }
    return result;
}

py::object sentWordOf(const py::object& type, const WordRecord& record) {
    const Waveform wave = waveformOf(record);
    WordElements sent(static_cast<std::size_t>(wave.length));
    WordElements received(sent.size());
    bool isKnown = wave.complete;
    for (const WaveBit& bit : wave.bits) {
        sent.at(static_cast<std::size_t>(bit.number)) = bit.sent ? 1 : 0;
        received.at(static_cast<std::size_t>(bit.number)) = bit.received.value_or(false) ? 1 : 0;
        isKnown = isKnown && bit.received;
    }
    constexpr double nanosecondsOfMillisecond = 1e6;
    return type(numberOf(sent), isKnown ? py::object(numberOf(received)) : py::none(), wave.length,
                static_cast<double>(wave.origin) / nanosecondsOfMillisecond);
}

py::list lastWords(ScriptBench& bench, int count) {
    if (count < 0)
        throw py::value_error("count is 0 or more");
    const py::object type = py::module_::import("bitlux").attr("SentWord");
    return look(bench, [&] {
        const std::deque<WordRecord>& words = bench.program().waveform().words();
        py::list result;
        const std::size_t kept = std::min(words.size(), static_cast<std::size_t>(count));
        for (std::size_t i = words.size() - kept; i < words.size(); ++i)
            result.append(sentWordOf(type, words[i]));
        return result;
    });
}

void setTraceLimit(ScriptBench& bench, std::int64_t limit) {
    if (limit < 1)
        throw py::value_error("trace_limit is 1 or more");
    look(bench, [&] { bench.trace().setLimit(static_cast<std::size_t>(limit)); });
}

void bindTrace(BenchClass& bench) {
    bench
        .def_property_readonly(
            "trace", [](ScriptBench& self) { return look(self, [&] { return traceOf(self); }); },
            "What went over the wire, from the oldest that is kept to the last: (\"W\", 0x378, "
            "5),\n"
            "(\"R\", 0x379, 32) of the port's registers, (\"OUT\", bytes), (\"IN\", bytes) of the\n"
            "dongle's frames of 8 bytes.")
        .def_property_readonly(
            "trace_dropped",
            [](ScriptBench& self) { return look(self, [&] { return self.trace().dropped(); }); },
            "How many entries the trace has lost at its old end since clear_trace().")
        .def_property(
            "trace_limit",
            [](ScriptBench& self) { return look(self, [&] { return self.trace().limit(); }); },
            setTraceLimit,
            "How many entries the trace keeps, the newest; 1 or more, 100000 at first. A word of "
            "8\n"
            "bits makes 25 or more on the port, 2 through the dongle. Raises ValueError below 1.")
        .def(
            "clear_trace", [](ScriptBench& self) { look(self, [&] { self.trace().clear(); }); },
            "Forget what went over the wire so far, and how much was dropped.")
        .def("last_words", lastWords, py::arg("count") = 20,
             "So many of the last words that were recorded, from the oldest to the last, as a list "
             "of\n"
             "SentWord. Raises ValueError below 0.")
        .def_property(
            "recording",
            [](ScriptBench& self) { return look(self, [&] { return self.recording(); }); },
            [](ScriptBench& self, bool on) { look(self, [&] { self.record(on); }); },
            "Whether what goes over the wire is recorded, as it is at first: in the trace, and in\n"
            "the waveform, which keeps as many of the last words as 16 MB hold. Setting it to "
            "True\n"
            "restarts the waveform.");
}

} // namespace

void bindTransfers(BenchClass& bench) {
    bindTrace(bench);
    bench
        .def("expect", expectAnswer, py::arg("word"), py::arg("pattern"), py::kw_only(),
             py::arg("within") = 0.0, py::arg("retries") = 0, py::arg("bits") = 0,
             py::arg("type") = 0,
             "Send a word as transfer does, and return its answer if it matches a pattern: "
             "\"5AXX\",\n"
             "\"0b1X0X\", or value and mask \"5A/F0\". Else the word is sent again for so many\n"
             "seconds, or so many times; with both the nearer limit counts. Raises Mismatch when\n"
             "none has matched, ValueError for a pattern that is not as long as the word, and as\n"
             "transfer.")
        .def(
            "transfer", transfer, py::arg("word"), py::arg("bits") = 0, py::arg("type") = 0,
            "Send a word and return the answer, in the shape in force but for bits (1 to 160) and\n"
            "the SPI type (1 to 8), 0 for the present ones. No form takes part, and nothing is\n"
            "logged. Raises ValueError for a shape that there is none of, or that the bus does "
            "not\n"
            "carry, and for a word that is negative or has more bits; LinkFailed or PortUnusable\n"
            "when the word did not go through.")
        .def(
            "transfer_many", transferMany, py::arg("words"), py::arg("bits") = 0,
            py::arg("type") = 0,
            "Send words one after the other and return the list of their answers; as transfer,\n"
            "which is slower by the calls. All words are looked at before the first is sent. What\n"
            "ends it has the answers that had come as its attribute answers, Ctrl-C too.");
}

} // namespace bitlux::python
