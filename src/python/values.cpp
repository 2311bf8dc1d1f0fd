#include "python/values.h"

#include <algorithm>
#include <array>
#include <limits>
#include <type_traits>
#include <utility>
#include <variant>

#include <fmt/format.h>

#include <pybind11/stl.h>

namespace bitlux::python {

namespace {

template <typename... Cases>
struct Overloaded : Cases... {
    using Cases::operator()...;
};
template <typename... Cases>
Overloaded(Cases...) -> Overloaded<Cases...>;

template <int Bits>
py::object listOf(const PortPins<Bits>& pins) {
    py::list result;
    for (int bit = 0; bit < Bits; ++bit)
        result.append(py::make_tuple(pins.level(bit), pins.name(bit)));
    return result;
}

py::object listOf(std::span<const PartTab> tabs) {
    py::list result;
    for (const PartTab& tab : tabs)
        result.append(
            py::dict(py::arg("PartNumber") = tab.PartNumber, py::arg("FrameIndex") = tab.FrameIndex,
                     py::arg("TitleText") = tab.TitleText, py::arg("WordLength") = tab.WordLength,
                     py::arg("TypeNumber") = tab.TypeNumber));
    return result;
}

py::object listOf(const QuickCommandTable& table) {
    py::list result;
    for (std::size_t row = 0; row < table.rows(); ++row) {
        py::list bits;
        for (const std::int16_t bit : table.bits(row))
            bits.append(bit);
        result.append(py::make_tuple(std::string(table.name(row)), bits));
    }
    return result;
}

py::object listOf(const BatchLists& batches) {
    py::list result;
    for (int n = 1; n <= batches.count(); ++n)
        result.append(py::cast(batches(n)));
    return result;
}

template <typename T>
T whole(const std::string& name, const py::handle& value) {
    if (!PyLong_Check(value.ptr()))
        throw py::type_error(name + " is a whole number");
    const long long number = PyLong_AsLongLong(value.ptr());
    const bool failed = number == -1 && PyErr_Occurred() != nullptr;
    PyErr_Clear();
    if (failed || number < std::numeric_limits<T>::min() || number > std::numeric_limits<T>::max())
        throw py::value_error(fmt::format("{} is between {} and {}", name,
                                          std::numeric_limits<T>::min(),
                                          std::numeric_limits<T>::max()));
    return static_cast<T>(number);
}

std::string text(const std::string& name, const py::handle& value) {
    if (!PyUnicode_Check(value.ptr()))
        throw py::type_error(name + " is a str");
    return py::cast<std::string>(value);
}

template <typename T>
T element(const std::string& name, const py::handle& value) {
    if constexpr (std::is_same_v<T, std::string>)
        return text(name, value);
    else
        return whole<T>(name, value);
}

template <typename T>
std::vector<T> elements(const std::string& name, const py::handle& value) {
    if (!py::isinstance<py::sequence>(value) || PyUnicode_Check(value.ptr()))
        throw py::type_error(name + " is a list");
    std::vector<T> result;
    for (const py::handle& one : value)
        result.push_back(element<T>(name, one));
    return result;
}

template <typename T>
void fill(std::span<T> place, const std::string& name, const py::handle& value) {
    std::vector<T> values = elements<T>(name, value);
    if (values.size() != place.size())
        throw py::value_error(fmt::format("{} has {} elements", name, place.size()));
    std::move(values.begin(), values.end(), place.begin());
}

constexpr std::array answers{
    std::pair{MessageBox::Answer::Ok, "OK"}, std::pair{MessageBox::Answer::Cancel, "Cancel"},
    std::pair{MessageBox::Answer::Yes, "Yes"}, std::pair{MessageBox::Answer::No, "No"}};

} // namespace

py::object toPython(const forms::Value& value) {
    return std::visit(Overloaded{[](std::monostate) -> py::object { return py::none(); },
                                 [](const auto& known) -> py::object { return py::cast(known); }},
                      value);
}

forms::Value fromPython(const py::handle& value) {
    if (value.is_none())
        return {};
    if (PyBool_Check(value.ptr()))
        return value.ptr() == Py_True;
    if (PyLong_Check(value.ptr()))
        return whole<std::int64_t>("The value", value);
    if (PyFloat_Check(value.ptr()))
        return py::cast<double>(value);
    return text("The value", value);
}

py::object toPython(const VariablePlace& place) {
    return std::visit(
        Overloaded{[](std::int32_t number) -> py::object { return py::int_(number); },
                   [](const Flag* flag) -> py::object { return py::int_(flag->value()); },
                   [](std::span<const PartTab> tabs) -> py::object { return listOf(tabs); },
                   [](const PortPins<8>* pins) -> py::object { return listOf(*pins); },
                   [](const PortPins<4>* pins) -> py::object { return listOf(*pins); },
                   [](const QuickCommandTable* table) -> py::object { return listOf(*table); },
                   [](const BatchLists* batches) -> py::object { return listOf(*batches); },
                   []<typename T>(std::span<T> elements) -> py::object {
                       py::list result;
                       for (const T& one : elements)
                           result.append(one);
                       return result;
                   },
                   [](const auto* variable) -> py::object { return py::cast(*variable); }},
        place);
}

void assign(const VariablePlace& place, const std::string& name, const py::handle& value) {
    std::visit(
        Overloaded{[&](bool* variable) {
                       if (!PyBool_Check(value.ptr()))
                           throw py::type_error(name + " is True or False");
                       *variable = value.ptr() == Py_True;
                   },
                   [&](Flag* variable) { *variable = Flag(whole<std::int16_t>(name, value)); },
                   [&](std::string* variable) { *variable = text(name, value); },
                   [&](std::vector<std::int16_t>* variable) {
                       *variable = elements<std::int16_t>(name, value);
                   },
                   [&](std::span<std::int16_t> elements) { fill(elements, name, value); },
                   [&](std::span<std::int32_t> elements) { fill(elements, name, value); },
                   [&](std::span<std::string> elements) { fill(elements, name, value); },
                   [&]<std::integral T>(T* variable) { *variable = whole<T>(name, value); },
                   [&](const auto&) { throw py::attribute_error(name + " can only be read"); }},
        place);
}

std::vector<std::int16_t> bitsOf(const py::int_& number) {
    std::vector<std::int16_t> bits;
    const auto low = PyLong_AsUnsignedLongLong(number.ptr());
    if (low != static_cast<unsigned long long>(-1) || PyErr_Occurred() == nullptr) {
        for (unsigned long long left = low; left != 0; left >>= 1U)
            bits.push_back(static_cast<std::int16_t>(left & 1U));
        return bits;
    }
    PyErr_Clear(); // it is negative, or has more than 64 bits
    for (const bool bit : replyOf(number))
        bits.push_back(bit ? 1 : 0);
    return bits;
}

py::int_ numberOf(const std::vector<std::int16_t>& bits) {
    constexpr std::size_t most = 64;
    if (bits.size() > most)
        return numberOf(Reply(bits.begin(), bits.end()));
    unsigned long long number = 0;
    for (std::size_t i = 0; i < bits.size(); ++i)
        number |= static_cast<unsigned long long>(bits[i] != 0) << i;
    return number;
}

Reply replyOf(const py::int_& number) {
    const auto hex = py::cast<std::string>(py::str("{:X}").format(number));
    if (hex.starts_with('-'))
        throw py::value_error("A word is not negative");
    return replyFromHex(hex);
}

py::int_ numberOf(const Reply& reply) {
    std::string text(std::max<std::size_t>(reply.size(), 1), '0');
    for (std::size_t i = 0; i < reply.size(); ++i)
        text[text.size() - 1 - i] = reply[i] ? '1' : '0';
    return py::reinterpret_steal<py::int_>(PyLong_FromString(text.c_str(), nullptr, 2));
}

const char* nameOf(MessageBox::Answer answer) {
    return std::find_if(answers.begin(), answers.end(),
                        [answer](const auto& one) { return one.first == answer; })
        ->second;
}

MessageBox::Answer answerFrom(const std::string& name) {
    for (const auto& [answer, button] : answers)
        if (name == button || (answer == MessageBox::Answer::Ok && name == "Ok"))
            return answer;
    throw py::value_error(R"(")" + name + R"(" is no button; there are OK, Cancel, Yes and No)");
}

} // namespace bitlux::python
