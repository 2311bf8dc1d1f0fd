#include "panels/zt72518/sequence_decoder.h"

#include "chips/zt72518/flags.h"
#include "chips/zt72518/registers.h"
#include "panels/common/register_words.h"

#include <array>
#include <cstdint>
#include <functional>
#include <map>
#include <string>
#include <utility>

namespace bitlux::zt72518 {

namespace chip = oldchips::zt72518;

namespace {

struct Meaning {
    std::uint8_t high;
    bool isWrite = false;
};

using Meanings = std::map<std::string, Meaning, std::less<>>;

constexpr std::array<std::pair<std::string_view, int>, 5> watchdogCommands{
    {{"Start Watchdog", 0},
     {"Stop Watchdog", 2},
     {"Start Watchdog Current", 4},
     {"Stop Watchdog Current", 6},
     {"One Simple Watchdog", 12}}};

void addRegister(Meanings& meanings, const oldchips::Register& known) {
    const std::uint8_t high = chip::readHigh(known.address);
    if (known.lines.write)
        meanings[lineName(known, " Write")] = {chip::writeHigh(known.address), true};
    if (known.lines.readLow)
        meanings[readLine(known, RegisterView::Low)] = {
            known.lowLineReads < 0 ? high : chip::readHigh(known.lowLineReads)};
    if (known.lines.readHigh)
        meanings[readLine(known, RegisterView::High)] = {high};
}

Meanings allMeanings() {
    Meanings meanings;
    for (const oldchips::Register& known : chip::registers)
        if (!known.stem.empty())
            addRegister(meanings, known);
    for (const chip::FlagRow& row : chip::lowFlagRows)
        meanings[std::string(row.sequenceName)] = {row.wordHigh};
    for (const chip::FlagRow& row : chip::highFlagRows)
        meanings[std::string(row.sequenceName)] = {row.wordHigh};
    return meanings;
}

} // namespace

void SequenceDecoder::Decod_Name(std::string_view name) {
    static const Meanings meanings = allMeanings();
    variables_.SequenceHighByte = 0;
    variables_.SequenceIsWrite = false;
    variables_.SequenceIsWatchdog = false;
    for (const auto& [command, button] : watchdogCommands)
        if (command == name) {
            variables_.SequenceIsWatchdog = true;
            clickWatchdog(button);
            return;
        }
    const auto found = meanings.find(name);
    if (found == meanings.end())
        return;
    const auto [high, isWrite] = found->second;
    variables_.SequenceHighByte =
        static_cast<std::uint8_t>(high + (isWrite ? 0 : variables_.ReadBit));
    variables_.SequenceIsWrite = isWrite;
}

} // namespace bitlux::zt72518
