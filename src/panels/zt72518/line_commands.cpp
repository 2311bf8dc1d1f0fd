#include "panels/zt72518/line_commands.h"

#include "chips/zt72518/registers.h"
#include "panels/common/binary_text.h"
#include "panels/common/hex_value.h"
#include "platform/conversions.h"
#include "platform/failure.h"

#include <optional>

#include <fmt/format.h>

namespace bitlux::zt72518 {

namespace chip = chips::zt72518;

namespace {

constexpr int parityOption = 6; ///< bit of Init Misc

std::uint8_t byteIn(const std::string& value) {
    return static_cast<std::uint8_t>(hexValue(value, 8));
}

std::string answerText(std::uint8_t byte) {
    const std::string digits = hex(byte);
    return fmt::format("{}{}  ({})", byte < 16 ? " 0000 " : "", HEXtoBIN(digits), digits);
}

} // namespace

void LineCommands::lineBegins(int line) {
    parts_.session.USBFrameTopBit = val(parts_.triggerLine.text()) == line;
}

std::vector<std::string> LineCommands::play(int line, const std::string& name,
                                            const std::string& value) {
    if (name == writeLine(chip::registers[chip::initMisc]))
        variables_.SPIParityEnabled = ((byteIn(value) >> parityOption) & 1) != 0;
    if (name == writeLine(chip::registers[chip::specialMode])) {
        enterSpecialMode(byteIn(value));
        return {};
    }
    if (const std::optional<int> mode = Watchdog::modeNumber(name)) {
        parts_.watchdog.startBySequence(*mode, line);
        return {};
    }
    return send(name, value);
}

void LineCommands::enterSpecialMode(std::uint8_t choice) {
    if (choice > 3)
        throw Failure(Failure::Kind::OutOfRange,
                      fmt::format("There is no Special Mode {}", choice));
    parts_.link.send(
        static_cast<std::uint8_t>(chip::readHigh(chip::specialMode) + variables_.ReadBit), 0);
    if (!variables_.RunEnabled) // the panel was closed under a box
        return;
    constexpr unsigned allRandomBits = (1U << chip::specialRandomBits) - 1;
    const unsigned inverse = allRandomBits & ~static_cast<unsigned>(parts_.link.replyLow());
    const unsigned data = (unsigned{choice} << chip::specialRandomBits) + inverse;
    parts_.link.send(chip::writeHigh(chip::specialMode), static_cast<std::uint8_t>(data));
}

std::vector<std::string> LineCommands::send(const std::string& name, const std::string& value) {
    parts_.decoder.Decod_Name(name);
    if (variables_.SequenceIsWatchdog)
        return {};
    variables_.WordLowByte = byteIn(value);
    // Computed as for a write by hand; the words of a run carry none.
    if (variables_.SequenceIsWrite && variables_.SPIParityEnabled)
        parts_.words.ParityOfWordLow(variables_.WordLowByte);
    parts_.link.send(variables_.SequenceHighByte, variables_.WordLowByte);
    return {answerText(parts_.link.replyHigh()), answerText(parts_.link.replyLow())};
}

} // namespace bitlux::zt72518
