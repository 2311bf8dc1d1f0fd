#include "program/word_copies.h"

#include "program/program.h"
#include "sending/word_text.h"

#include <algorithm>
#include <array>
#include <optional>
#include <utility>

#include <fmt/format.h>

namespace bitlux {

namespace {

using Options = std::vector<std::string>;

void add(Options& options, const char* name, const std::string& value, const char* usual) {
    if (value == usual)
        return;
    options.emplace_back(name);
    options.push_back(value);
}

std::string pinsOf(const Session& session) {
    const auto dataPin = [](std::int16_t bit) { return bit + 2; };
    std::string dataOut;
    for (const char* pin : {"12", "13", "15"})
        if (ConvertPin(pin) == session.DOPin)
            dataOut = pin;
    return fmt::format("{},{},{},{}", dataPin(session.CSPin), dataPin(session.DIPin),
                       dataPin(session.ClockPin), dataOut);
}

std::string clockOf(const Session& session) {
    constexpr std::array<const char*, 4> clocks{"4M", "1M", "500k", "62.5k"};
    constexpr int step = 64;
    return clocks.at(static_cast<std::size_t>(session.SPIBaudRate / step));
}

} // namespace

std::vector<CopiedWord> WordCopies::inForce(std::vector<std::int16_t> bits) const {
    const Session& session = program_.session();
    return {{.bits = static_cast<int>(bits.size()),
             .type = session.SPIType,
             .msbFirst = session.MSBFirst == ConstOn,
             .digits = hexText(bits)}};
}

std::vector<CopiedWord> WordCopies::ofLogLine(std::size_t line) const {
    std::vector<std::int16_t> bits = program_.mainForm().log.lines().sentAt(line);
    return bits.empty() ? std::vector<CopiedWord>{} : inForce(std::move(bits));
}

std::vector<CopiedWord> WordCopies::ofQuickCommand(const std::string& name) const {
    const QuickCommandTable& table = program_.session().QuickCommandTable;
    const std::optional<std::size_t> row = table.lastRowNamed(name);
    if (!row || name.empty())
        return {};
    const auto bits = table.bits(*row);
    if (std::any_of(bits.begin(), bits.end(), [](std::int16_t bit) { return (bit & ~1) != 0; }))
        return {};
    return inForce({bits.begin(), bits.end()});
}

std::vector<CopiedWord> WordCopies::ofRows(const std::vector<std::size_t>& rows) const {
    std::vector<CopiedWord> words;
    for (const std::size_t row : rows) {
        const WordData data = program_.decoded().log().data(row);
        words.push_back({.bits = data.length,
                         .type = data.type,
                         .msbFirst = data.msbFirst,
                         .digits = data.hexOf(data.sent)});
    }
    return words;
}

std::string WordCopies::text(Form form, const std::vector<CopiedWord>& words) const {
    switch (form) {
    case Form::Python:
        return pythonText(words);
    case Form::CommandLine:
        return commandLineText(words, sendOptions());
    case Form::CBytes:
        break;
    }
    return cBytesText(words);
}

/// What differs from the defaults of the command, and the bus in use.
std::vector<std::string> WordCopies::sendOptions() const {
    const Session& session = program_.session();
    const bool onDongle = program_.engine().usesDongle();
    const auto level = [](bool high) { return high ? "high" : "low"; };
    Options options;
    add(options, "--cs", level(session.CSAssertLevel == ConstHigh), "low");
    add(options, "--di", level(session.DIOneLevel == ConstHigh), "high");
    add(options, "--do", level(session.DOHighValue == 1), "high");
    if (onDongle)
        add(options, "--clock", clockOf(session), "1M");
    else
        add(options, "--pins", pinsOf(session), "2,3,4,12");
    const Options benchOptions = bench();
    options.insert(options.end(), benchOptions.begin(), benchOptions.end());
    const AdapterPort* adapter = onDongle ? nullptr : program_.adapters().inUse();
    if (adapter != nullptr)
        add(options, "--bus",
            benchOptions.empty() && !adapter->adapter().serial.empty()
                ? "ftdi:" + adapter->adapter().serial
                : "ftdi",
            "");
    else if (onDongle || session.ParallelPortReady)
        add(options, "--bus", onDongle ? "dongle" : "port", "");
    const bool isFirst = session.LPTPortAddress == session.LPTPortAddresses[0];
    if (!onDongle && adapter == nullptr && session.ParallelPortReady && benchOptions.empty() &&
        !isFirst)
        add(options, "--port",
            fmt::format("0x{:X}", static_cast<std::uint16_t>(session.LPTPortAddress)), "");
    return options;
}

} // namespace bitlux
