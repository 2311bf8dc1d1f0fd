#include "platform/adapter.h"

#include <algorithm>

#include <fmt/format.h>

namespace bitlux {

namespace {

constexpr int lineCount = 8;
constexpr int pins = 17;

} // namespace

AdapterWiring AdapterWiring::standard() {
    AdapterWiring wiring;
    constexpr std::array pinOfLine{4, 3, 12, 2, 5, 6, 7, 8};
    for (int line = 0; line < lineCount; ++line)
        wiring.connect(pinOfLine.at(static_cast<std::size_t>(line)), line);
    return wiring;
}

bool AdapterWiring::connect(int pin, int line) {
    const bool isTaken = std::find(lines_.begin(), lines_.end(), line) != lines_.end();
    if (pin < 1 || pin > pins || line < 0 || line >= lineCount || isTaken)
        return false;
    lines_.at(static_cast<std::size_t>(pin)) = static_cast<std::int8_t>(line);
    return true;
}

void AdapterWiring::cutFrom(int count) {
    std::replace_if(
        lines_.begin(), lines_.end(), [count](int line) { return line >= count; }, std::int8_t{-1});
}

std::optional<int> AdapterWiring::lineOf(int pin) const {
    if (pin < 1 || pin > pins || lines_.at(static_cast<std::size_t>(pin)) < 0)
        return std::nullopt;
    return lines_.at(static_cast<std::size_t>(pin));
}

std::string AdapterWiring::pinsText() const {
    std::vector<std::string> ranges;
    for (int pin = 1; pin <= pins; ++pin) {
        if (!lineOf(pin))
            continue;
        const int first = pin;
        while (lineOf(pin + 1))
            ++pin;
        if (pin - first > 1)
            ranges.push_back(fmt::format("{} to {}", first, pin));
        else
            for (int single = first; single <= pin; ++single)
                ranges.push_back(fmt::format("{}", single));
    }
    if (ranges.empty())
        return "none";
    std::string text = ranges.front();
    for (std::size_t i = 1; i < ranges.size(); ++i)
        text += (i + 1 == ranges.size() ? " and " : ", ") + ranges[i];
    return text;
}

std::string rateText(double bytesPerSecond) {
    constexpr double kilo = 1e3;
    constexpr double mega = 1e6;
    if (bytesPerSecond >= mega)
        return fmt::format("{:.4g} MHz", bytesPerSecond / mega);
    if (bytesPerSecond >= kilo)
        return fmt::format("{:.4g} kHz", bytesPerSecond / kilo);
    return fmt::format("{:.4g} Hz", bytesPerSecond);
}

std::string Adapter::name() const {
    return serial.empty() ? fmt::format("{} at {}", type, place)
                          : fmt::format("{} {}", type, serial);
}

} // namespace bitlux
